// The products of a substance, widened through its synonyms and the
// components of a concept (PAProduits_Vdx, ExcipientProduits_Vdx), the
// labels of substances and excipients, and the synonyms of a component.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// Substance numbers are written on five digits in the reverse indexes.
inline constexpr int32_t SubstanceMax = 99999;
// Numbers above this one are concepts of the thesaurus: their products are
// those of their components.
inline constexpr int32_t DerniereSubstance = 30000;

// A row of PAProduits_Vdx: the product, its label ("CIP : X inexistant" for
// a code VDXPRO lacks) and the reverse index that named it, "PA" or "EXC".
struct ProduitDeSubstance {
    std::string CodeCIP;
    std::string Libelle;
    std::string Nature;
};
VDX_LIGNE(ProduitDeSubstance, CodeCIP, Libelle, Nature);

// The label of a product as the lists of products show it, with VDXPRO
// open: "CIP : X inexistant" for a code the table lacks; none for a
// product they leave out, reserved to hospitals (unless they are switched
// on) or deleted.
std::optional<std::string> LibelleDeProduitMontre(const Contexte& contexte, const std::string& code);
// The lists of products in the order they show them: by label, products of
// one label in the order met.
template <class Ligne>
void TrieParLibelle(std::vector<Ligne>& lignes) {
    std::ranges::stable_sort(lignes, [](const Ligne& a, const Ligne& b) { return a.Libelle < b.Libelle; });
}

// A substance number is one of 0 to SubstanceMax.
inline bool CodeSubstanceValide(int32_t code) { return code >= 0 && code <= SubstanceMax; }

// The products of `code` (0 to SubstanceMax, checked by the caller) and of
// each of its synonyms, a concept standing for its components; for each
// substance VDXVPAP then VDXVEXCP, except that a substance above every key
// of VDXVPAP is not looked for in VDXVEXCP. Products reserved to hospitals
// (unless the context's HospitaliersActifs), lines by common name and deleted products
// are left out; a product has one row, the first met, so "PA" wins. Sorted
// by label. Throws Echec(-500).
std::vector<ProduitDeSubstance> ProduitsDeSubstance(const Contexte& contexte, int32_t code);

// Each product the reverse indexes give a substance or excipient number
// (0 to SubstanceMax), VDXVPAP then VDXVEXCP, which the caller holds open:
// its CodeCIP and the index's word, "PA" or "EXC". VDXVEXCP is not looked
// at when VDXVPAP holds no key at or above the number. Throws Echec(-500).
void ParcourtProduitsDuComposant(int32_t code, const std::function<void(std::string_view cip, const char* nature)>& chacun);

// LibellePA_Vdx (VDXVPA) and LibelleExcipient_Vdx (VDXVEXC). Throws
// Echec: -10 a code outside 0 to 99999; -90 unknown; -500.
std::string LibellePA(int32_t code);
std::string LibelleExcipient(int32_t code);

// A synonym of a component, labelled from VDXVPA ("Code N introuvable").
struct Synonyme {
    int32_t Code;
    std::string Libelle;
};
VDX_LIGNE(Synonyme, Code, Libelle);
// The synonyms of `code` in the order of VDXWSYNC, the code itself not
// among them. Throws Echec(-500).
std::vector<Synonyme> SynonymesComposant(int32_t code);
// Their codes alone.
std::vector<int32_t> CodesSynonymes(int32_t code);

}  // namespace vdx
