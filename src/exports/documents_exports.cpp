// The C exports of the documents.
#include "documents/rtf.h"
#include "exports/declaration.h"

using namespace vdx;

// Needs no connection; the text goes to the host string as 8-bit bytes in
// every output mode, with no delivery by mode; in mode 0 it is emptied
// first. 1, or TamponRtfIndisponible.
VDX_EXPORT(Rtf_To_Texte, Libre, {}, (Texte, Texte), (ChaineSortie, Sortie)) {
    if (session().ModeSortie == ModeTableau) RangeEnOctets(Sortie, "");
    std::string resultat;
    try {
        resultat = RtfVersTexte(Requis(Texte));
    } catch (const std::bad_alloc&) {
        return TamponRtfIndisponible;
    }
    RangeEnOctets(Sortie, resultat);
    return Succes;
}
