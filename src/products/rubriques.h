// The sheets of a product that the base holds as rows under the product (or
// under a class) in the order of a rank: its excipients (the composition),
// accessories, appearance, adverse effects, the reconstitution of a
// cytotoxic product, the recommendations and the opposable medical
// references (RMO) of a product and its classes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/lignes.h"

namespace vdx {

struct AccessoireProduit {
    std::string CodeAccessoire, Libelle, Relation, Remarque;
};
VDX_LIGNE(AccessoireProduit, CodeAccessoire, Libelle, Relation, Remarque);

struct AspectProduit {
    std::string Forme, Couleur, Marquage, Secabilite;
};
VDX_LIGNE(AspectProduit, Forme, Couleur, Marquage, Secabilite);

struct EffetIndesirable {
    std::string ClasseOrgane, Frequence, Libelle;
};
VDX_LIGNE(EffetIndesirable, ClasseOrgane, Frequence, Libelle);

struct EtapeReconstitution {
    std::string Etape, Solvant, Concentration, Stabilite;
};
VDX_LIGNE(EtapeReconstitution, Etape, Solvant, Concentration, Stabilite);

// Code: the product or the class it is attached to.
struct Recommandation {
    std::string Code, Source, Date, Titre, Texte;
};
VDX_LIGNE(Recommandation, Code, Source, Date, Titre, Texte);

// The rows of a seven-digit CodeCIP, in the order of their ranks; none for
// a product without any. Throw Echec(-500).
std::vector<AccessoireProduit> AccessoiresDuProduit(std::string_view cip);
std::vector<AspectProduit> AspectDuProduit(std::string_view cip);
std::vector<EffetIndesirable> EffetsDuProduit(std::string_view cip);
std::vector<EtapeReconstitution> ReconstitutionDuProduit(std::string_view cip);
// Those attached to the product, then to each of its therapeutic classes
// and the classes above them (VDXCLAP, a class "M01AE" under "M01A" and
// "M01"), each class once, in the order of the product's classes.
std::vector<Recommandation> RecommandationsDuProduit(std::string_view cip);
// The opposable medical references (RMO) of the product and its classes,
// in the same walk.
std::vector<Recommandation> RMODuProduit(std::string_view cip);

// The opposable medical references of each product of a prescription, a
// code given twice taken once, with the product's label ("CIP : X
// inexistant" for one the master table lacks). Throws Echec(-500).
struct RMOProduit {
    std::string CodeCIP, LibelleProduit;
    Recommandation rmo;
};
std::vector<RMOProduit> RMODesProduits(const std::vector<std::string>& codes);

}  // namespace vdx
