// The searches of products: the step searches by label, on all products
// (or the doctor's own) and by category, and the products of a status.
// Rows of three texts: the CodeCIP (its 13-digit form under CIP13Actif 1),
// the label, and a further text (the doctor's comment, else empty).
#pragma once

#include <cstdint>

#include "vdx32/oleauto.h"

namespace vdx {

// Bits of the Options of RechercheProduitParPas_Vdx.
inline constexpr int32_t SansRubrique40 = 1;  // hides the products of CodeRubrique 40
inline constexpr int32_t BaseMedecin = 2;     // the doctor's products in place of VDXPRO
// Hides deleted products, in both step searches.
inline constexpr int32_t SansSupprimes = 256;

// RechercheProduitParPas_Vdx: a page of at most `nombre` products in the
// order of the label key, from the prefix of `texte` ("prefix@word@word"),
// behind the product whose label is `suite` when one is given. The rows;
// 0 nothing (or a `texte` beginning with a blank, the array untouched);
// -20, -30 (low bits 3), -4 (no doctor's base), -500.
int32_t RechercheProduitParPas(const char* texte, SAFEARRAY** tableau, int32_t options, const char* suite,
                               int32_t nombre);
// RechercheProduitParPas2_Vdx: the same in one category of VDXVPRO, chosen
// by the low byte of `options`; -30 for a low byte outside the table.
int32_t RechercheProduitParPas2(const char* texte, SAFEARRAY** tableau, int32_t options, const char* suite,
                                int32_t nombre);
// RechercheProduitParStatut_Vdx: the products of a CodeStatut in code order,
// behind the code `suite` when one is given, at most `nombre` of them (all
// for 0 or less). The rows; 0 none; -20, -500.
int32_t RechercheProduitParStatut(int32_t codeStatut, SAFEARRAY** tableau, const char* suite, int32_t nombre);

}  // namespace vdx
