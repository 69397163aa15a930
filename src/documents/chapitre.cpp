#include "documents/chapitre.h"

#include "documents/rtf.h"
#include "store/fiche.h"

namespace vdx {

std::string ExtraitChapitre(int n, std::string_view corps, bool brut, std::string_view texteFixe) {
    const Fiche fiche(corps);
    if (brut) return std::string(fiche.Section(n));
    const std::string_view rtf = fiche.Section(2 * n);
    return RtfVersTexte(rtf.empty() ? texteFixe : rtf);
}

std::string ExtraitChapitreNotice(int n, std::string_view corps) {
    const std::string_view champ = Fiche(corps).Section(n);
    return champ.empty() ? std::string(InformationIndisponible) : std::string(champ);
}

}  // namespace vdx
