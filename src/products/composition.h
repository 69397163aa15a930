// The composition of a product: its components with their quantities and
// labels, the basis its quantities are expressed on, and the text of the
// composition (ProduitPA_Vdx). The checks read it through
// CompositionProduit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/catalogue.h"
#include "store/champ.h"
#include "session/lignes.h"

namespace vdx {

// One component of a product, a row of ProduitPA_Vdx.
struct Composant {
    int32_t SansQuantite = 0;  // 1 when Quantite is 0
    int32_t CodeSubstance = 0;
    float Quantite = 0;
    std::string Libelle;        // of VDXVPA, or "Code N introuvable"
    std::string QuantiteTexte;  // as printed
    std::string LibelleUnite;   // of VDXVPAU, or "Code N introuvable"
};

// The host's record, and the flat text's order of the same fields.
VDX_LIGNE(Composant, SansQuantite, CodeSubstance, Quantite, Libelle, QuantiteTexte, LibelleUnite);
VDX_VUE(ComposantPlat, Composant, CodeSubstance, SansQuantite, Quantite, Libelle, QuantiteTexte, LibelleUnite);

struct Composition {
    std::string LibelleExprime;    // the basis of the quantities (VDXVPAE), or empty
    std::string TexteComposition;  // VDXVCOMG, or empty
    std::vector<Composant> composants;  // in the order of VDXVCOMP
};

// The composition of `codeCIP` (a CodeCIP already checked). Throws
// Echec(-500) when the store fails.
Composition CompositionProduit(std::string_view codeCIP);
// The substances of its components that have a quantity, in the same
// order, nothing else read.
std::vector<int32_t> SubstancesDosees(std::string_view codeCIP);

// One excipient of a product, a row of ProduitExcipient_Vdx: its number,
// label (of VDXVEXC, or "Code N introuvable"), quantity as printed, and
// "1" when its effect is known ("0" otherwise).
struct ExcipientProduit {
    std::string CodeExcipient;
    std::string Libelle;
    std::string Quantite;
    std::string EffetNotoire;
    bool Notoire() const { return EffetNotoire == "1"; }
};
VDX_LIGNE(ExcipientProduit, CodeExcipient, Libelle, Quantite, EffetNotoire);
// The excipients of `codeCIP` in the order of VDXVCOME; the mark of a known
// effect in the quantity's text is left out of Quantite. Throws Echec(-500).
std::vector<ExcipientProduit> ExcipientsDuProduit(std::string_view codeCIP);

// The label of an integer code in a table keyed by it alone (substances,
// excipients, units, bases), which the caller holds open: nullopt for an
// unknown code. Throws Echec(-500).
std::optional<std::string> LibelleParCode(const Table& table, const ChampTexte& libelle, int32_t code);
// The same, or "Code N introuvable".
std::string LibelleOuIntrouvable(const Table& table, const ChampTexte& libelle, int32_t code);

}  // namespace vdx
