// Wide host strings through the library's own table.
#include "platform/codepage.h"
#include "platform/codepage_table.h"

namespace vdx::codepage {

std::u16string VersUtf16(std::string_view cp1252) {
    std::u16string sortie;
    sortie.reserve(cp1252.size());
    for (char octet : cp1252)
        sortie += static_cast<char16_t>(CaractereDe(static_cast<unsigned char>(octet)));
    return sortie;
}

std::string DepuisUtf16(std::u16string_view texte) {
    std::string sortie;
    sortie.reserve(texte.size());
    for (size_t i = 0; i < texte.size(); ++i) {
        char16_t c = texte[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < texte.size() && texte[i + 1] >= 0xDC00 &&
            texte[i + 1] <= 0xDFFF) {
            ++i;  // a pair is one character, and none of them is in code page 1252
            sortie += '?';
            continue;
        }
        int octet = OctetDe(c);
        sortie += octet < 0 ? '?' : static_cast<char>(octet);
    }
    return sortie;
}

}  // namespace vdx::codepage
