// Wide host strings through the system's conversions, which the tests hold
// to the library's table byte for byte: no best-fit character, "?" for
// what code page 1252 lacks.
#include <windows.h>

#include <climits>

#include "platform/codepage.h"

namespace vdx::codepage {

namespace {

constexpr UINT PageDeCode = 1252;

// One run without surrogate pair, through the system.
void AjouteSansPaire(std::string& sortie, std::u16string_view texte) {
    if (texte.empty() || texte.size() > INT_MAX) return;
    const int n = static_cast<int>(texte.size());
    const size_t debut = sortie.size();
    sortie.resize(debut + texte.size());  // at most one byte per unit
    const int ecrits = WideCharToMultiByte(PageDeCode, WC_NO_BEST_FIT_CHARS, reinterpret_cast<const wchar_t*>(texte.data()),
                                           n, sortie.data() + debut, n, "?", nullptr);
    sortie.resize(debut + (ecrits > 0 ? static_cast<size_t>(ecrits) : 0));
}

}  // namespace

std::u16string VersUtf16(std::string_view cp1252) {
    if (cp1252.empty() || cp1252.size() > INT_MAX) return {};
    const int n = static_cast<int>(cp1252.size());
    std::u16string sortie(cp1252.size(), u'\0');  // one unit per byte
    const int ecrits =
        MultiByteToWideChar(PageDeCode, 0, cp1252.data(), n, reinterpret_cast<wchar_t*>(sortie.data()), n);
    sortie.resize(ecrits > 0 ? static_cast<size_t>(ecrits) : 0);
    return sortie;
}

std::string DepuisUtf16(std::u16string_view texte) {
    // The system gives a "?" for each half of a pair: a pair is one
    // character, and none of them is in code page 1252.
    std::string sortie;
    sortie.reserve(texte.size());
    size_t debut = 0;
    for (size_t i = 0; i + 1 < texte.size(); ++i)
        if (texte[i] >= 0xD800 && texte[i] <= 0xDBFF && texte[i + 1] >= 0xDC00 && texte[i + 1] <= 0xDFFF) {
            AjouteSansPaire(sortie, texte.substr(debut, i - debut));
            sortie += '?';
            debut = ++i + 1;
        }
    AjouteSansPaire(sortie, texte.substr(debut));
    return sortie;
}

}  // namespace vdx::codepage
