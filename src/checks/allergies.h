// A patient's allergies against the products of a prescription. Allergens
// (substances, or concepts of the thesaurus: numbers above
// DerniereSubstance) are expanded through the
// concepts' components, cross-allergies and synonyms into the substances
// they reach, each with the chain that tells how; the products' terms,
// excipients and active components are then compared with them. And the
// products that belong to a patient's therapeutic classes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "products/substances.h"
#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// A chain's text is cut to it.
inline constexpr size_t LongueurChaine = 255;
// How an alert reached its product.
inline constexpr int32_t AlerteTerme = 1;
inline constexpr int32_t AlerteAllergene = 2;

// An entry of the working list: a substance reached from the host's
// allergen, and the chain from the one to the other.
struct ChaineAllergie {
    int32_t CodeSubstance = 0;
    int32_t CodeAllergene = 0;
    std::string TexteChaine;
};

// The host's allergens expanded, in the order they were reached. With
// `premierConceptSeul` a substance leads to its first concept only (the
// excipients' check). Throws Echec(-500).
std::vector<ChaineAllergie> DeveloppeAllergenes(const std::vector<int32_t>& allergenes, bool premierConceptSeul);

struct FicheAllergie {
    int32_t TypeAlerte = 0;
    std::string CodeProduit;
    std::string LibelleProduit;
    std::string CodeCause;  // the term, or the allergen in decimal
    std::string TexteCause;  // the term's label, or the chain
};

struct FicheClasseAllergie {
    std::string CodeProduit;
    std::string LibelleProduit;
    std::string CodeClasse;  // the host's class
    std::string LibelleClasse;
};

// The products of `produits` that the allergy terms `termes` or the
// allergens forbid: rows in the order of products, then terms, excipients,
// active components; one per product and cause. Throws Echec: -13, -30,
// -90, -500.
std::vector<FicheAllergie> ControleAllergies(const Contexte& contexte, const std::vector<std::string>& termes,
                                             const std::vector<int32_t>& allergenes,
                                             const std::vector<std::string>& produits);
// The excipients of `produits` that the allergens reach.
std::vector<FicheAllergie> RechercheExcipients(const Contexte& contexte, const std::vector<int32_t>& allergenes,
                                               const std::vector<std::string>& produits);
// The products of `produits` whose class begins with one of `classes`, a
// row for each class of a product under each host class.
std::vector<FicheClasseAllergie> ProduitsDesClasses(const Contexte& contexte, const std::vector<std::string>& produits,
                                                    const std::vector<std::string>& classes);

VDX_LIGNE(FicheAllergie, TypeAlerte, CodeProduit, LibelleProduit, CodeCause, TexteCause);
VDX_LIGNE(FicheClasseAllergie, CodeProduit, LibelleProduit, CodeClasse, LibelleClasse);

}  // namespace vdx
