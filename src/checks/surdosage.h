// Redundancy in a prescription: two products that bring the same
// substance, a substance and one of its synonyms, or two products of one
// therapeutic class listed as risky when doubled (VDXCLAR). No quantity is
// read: only whether the products overlap. Only the components of products
// given by a route of the whole body ("A") are compared.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// How two products overlap.
inline constexpr int32_t RedondanceSynonyme = 2;
inline constexpr int32_t RedondanceSubstance = 3;
inline constexpr int32_t RedondanceClasse = 4;

struct FicheSurdosage {
    std::string CIP1;
    std::string CIP2;
    std::string Libelle1;
    std::string Libelle2;
    std::string Substance1;  // the substance of the first whose synonym is shared, in decimal
    std::string Substance2;
    std::string LibelleSubstance1;
    std::string LibelleSubstance2;
    std::string SubstanceCommune;
    std::string LibelleCommune;
    std::string ClasseCommune;
    std::string LibelleClasseCommune;
    int32_t TypeRedondance = 0;
};

// The redundancies of the products (CodeCIPs), in the order of the three
// comparisons: same substance, synonyms, classes. Throws Echec: -200 when
// a composition can't be read, -500.
std::vector<FicheSurdosage> Redondances(const Contexte& contexte, const std::vector<std::string>& produits);

// The longest class listed in VDXCLAR that begins both codes (compared on
// at most 10 characters); empty for none. A lookup with no key at or above
// the text stops the search and leaves -90 for GetLastError_Vdx.
std::string ClasseCommune(std::string_view a, std::string_view b);

VDX_LIGNE(FicheSurdosage, CIP1, CIP2, Libelle1, Libelle2, Substance1, Substance2, LibelleSubstance1,
          LibelleSubstance2, SubstanceCommune, LibelleCommune, ClasseCommune, LibelleClasseCommune, TypeRedondance);

}  // namespace vdx
