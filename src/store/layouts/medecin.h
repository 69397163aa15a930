// The doctor's private base.
#pragma once

#include <cstdint>

#include "store/champ.h"

namespace vdx {

// Own products. Keys: CodeCIP; the folded label (34).
namespace PRO {
inline constexpr uint32_t Longueur = 555;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Libelle, 8, 35);
VDX_TEXTE(Commentaire, 43, 512);
}  // namespace PRO

// Own pathologies. Keys: CodePathologie; the folded label (80).
namespace PATH {
inline constexpr uint32_t Longueur = 174;
VDX_TEXTE(CodePathologie, 0, 8);
VDX_TEXTE(Libelle, 8, 80);
VDX_TEXTE(CodeCISP, 88, 8);  // the rest of the record NUL
}  // namespace PATH

// Own posologies, in the working form of a posology (FichePosologie).
// Key (11): CodePosologie, "#", the seven digits and three characters.
namespace POSO {
inline constexpr uint32_t Longueur = 360;
VDX_TEXTE(CodePosologie, 0, 12);
VDX_TEXTE(CodeCIP, 12, 8);
VDX_TEXTE(Libelle, 20, 256);
VDX_REEL(DoseMin, 276);
VDX_REEL(DoseMax, 280);
VDX_ENTIER(CodeUnite, 284);
VDX_ENTIER(CodeUnite2, 288);
VDX_REEL(QuantiteRef, 292);
VDX_ENTIER(Conversion, 296);
VDX_TEXTE(TypeRef, 300, 4);
VDX_ENTIER(PrisesMin, 304);
VDX_ENTIER(PrisesMax, 308);
VDX_ENTIER(Intervalle, 312);
VDX_ENTIER(CodePeriode, 316);
VDX_ENTIER(CodeMoment, 320);
VDX_ENTIER(DureeMin, 324);
VDX_ENTIER(DureeMax, 328);
VDX_ENTIER(CodeDuree, 332);
VDX_REEL(DoseMaximum, 336);
VDX_ENTIER(MaximumRapporte, 340);
VDX_ENTIER(CodePeriodeMaximum, 344);
VDX_ENTIER(CodeSpecification, 348);
VDX_ENTIER(CodeSpecification2, 352);
VDX_ENTIER(NombreModeles, 356);
}  // namespace POSO

// Texts of own posologies: the key in the first 11 bytes, then the text,
// the record padded with NUL to the fixed part. Key: CodePosologie.
namespace TEXU {
inline constexpr uint32_t Longueur = 360;
VDX_TEXTE_PLEIN(CodePosologie, 0, 11);
}  // namespace TEXU

}  // namespace vdx
