// The searches of products: the step searches by label, on all products
// (or the doctor's own) and by category, and the products of a status.
// Rows of three texts: the CodeCIP (its 13-digit form under CIP13Actif 1),
// the label, and a further text (the doctor's comment, else empty).
#pragma once

#include <cstdint>

#include <string_view>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// Bits of the Options of RechercheProduitParPas_Vdx.
inline constexpr int32_t SansRubrique40 = 1;  // hides the products of CodeRubrique 40
inline constexpr int32_t BaseMedecin = 2;     // the doctor's products in place of VDXPRO
// Hides deleted products, in both step searches.
inline constexpr int32_t SansSupprimes = 256;

inline const Gabarit GabaritProduit = {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};

// RechercheProduitParPas_Vdx: a page of at most `nombre` products in the
// order of the label key, from the prefix of `texte` ("prefix@word@word"),
// behind the product whose label is `suite` when one is given. Throws
// Echec: -30 (low bits 3), -4 (no doctor's base), -500.
Lignes RechercheProduitParPas(const Contexte& contexte, std::string_view texte, int32_t options, std::string_view suite,
                              int32_t nombre);
// RechercheProduitParPas2_Vdx: the same in one category of VDXVPRO, chosen
// by the low byte of `options`; -30 for a low byte outside the table.
Lignes RechercheProduitParPas2(const Contexte& contexte, std::string_view texte, int32_t options,
                               std::string_view suite, int32_t nombre);
// RechercheProduitParStatut_Vdx: the products of a CodeStatut in code order,
// behind the code `suite` when one is given, at most `nombre` of them (all
// for 0 or less). Throws Echec(-500).
Lignes RechercheProduitParStatut(const Contexte& contexte, int32_t codeStatut, std::string_view suite, int32_t nombre);

}  // namespace vdx
