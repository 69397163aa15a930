// Any bytes through the RTF reader, as a string and, NUL-terminated, through
// the export. Beyond the sanitizers' faults, a run stops on a result that
// breaks what every text must give: no longer than the text up to its first
// NUL nor than the working buffer, no brace, CR LF line ends (a lone CR only
// as the last byte of a full buffer), and the same bytes from the export in
// the output modes and string settings the host may have set.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "documents/rtf.h"
#include "platform/hote.h"
#include "session/session.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

void Exige(bool condition) {
    if (!condition) std::abort();
}

bool FinsDeLigneCorrectes(std::string_view texte) {
    for (size_t i = 0; i < texte.size(); ++i) {
        if (texte[i] == '\n' && (i == 0 || texte[i - 1] != '\r')) return false;
        if (texte[i] == '\r' && (i + 1 < texte.size() ? texte[i + 1] != '\n' : texte.size() != TailleTamponRtf - 1))
            return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
    const std::string_view octets(reinterpret_cast<const char*>(donnees), taille);
    const std::string resultat = RtfVersTexte(octets);
    Exige(resultat.size() <= octets.substr(0, octets.find('\0')).size());
    Exige(resultat.size() < TailleTamponRtf);
    Exige(resultat.find_first_of("{}") == std::string::npos);
    Exige(FinsDeLigneCorrectes(resultat));

    // The host's settings, drawn from the length so that an input replays alike.
    session().ModeSortie = taille % 2 ? ModeTableau : ModeMemoire;
    session().ChainesUnicode = taille / 2 % 2;
    const std::string texte(octets);  // c_str() gives the NUL-terminated copy
    BSTR sortie = nullptr;
    Exige(hote::RangeOctets(&sortie, "ancien"));
    Exige(::Rtf_To_Texte(texte.c_str(), &sortie) == 1);
    Exige(hote::Octets(sortie) == resultat);
    hote::Libere(&sortie);
    return 0;
}
