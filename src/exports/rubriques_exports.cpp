// The C exports of the sheets of a product that the base holds under it:
// excipients, accessories, appearance, adverse effects, the reconstitution
// of a cytotoxic product, recommendations. Each takes a product's code and
// gives its rows, in the order of their ranks.
#include "exports/declaration.h"
#include "products/composition.h"
#include "products/rubriques.h"
#include "session/codeproduit.h"

using namespace vdx;

namespace {

// The rows `lit` gives of the product's code, delivered into the host's
// array of their shape.
template <class Ligne, class Lecteur>
int32_t LignesDuProduit(const char* code, SAFEARRAY** tableau, Lecteur lit) {
    const std::string cip = CodeProduit(code);
    Resultat resultat(tableau, GabaritDe<Ligne>(), Argument2);
    resultat.Prend(LignesSansCleSelon<Ligne>(lit(cip)));
    return resultat.Livre();
}

}  // namespace

#define RUBRIQUE(Nom, Ligne, lecture)                                                                   \
    VDX_EXPORT(Nom, Connecte, NomsDesChamps<Ligne>(), (Texte, Code), (Tableau, Tableau)) {              \
        return LignesDuProduit<Ligne>(Code, Tableau, [](const std::string& cip) { return lecture(cip); }); \
    }

RUBRIQUE(ProduitExcipient_Vdx, ExcipientProduit, ExcipientsDuProduit)
RUBRIQUE(AccessoireProduits_Vdx, AccessoireProduit, AccessoiresDuProduit)
RUBRIQUE(AspectProduits_Vdx, AspectProduit, AspectDuProduit)
RUBRIQUE(EffetIndesirable_Vdx, EffetIndesirable, EffetsDuProduit)
RUBRIQUE(OncoReconstitution_Vdx, EtapeReconstitution, ReconstitutionDuProduit)
RUBRIQUE(Recommandations_Vdx, Recommandation, RecommandationsDuProduit)
RUBRIQUE(RMO_Vdx, Recommandation, RMODuProduit)
