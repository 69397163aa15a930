// The posology catalogue of the base, its vocabularies and its limits.
#pragma once

#include <cstdint>

#include "store/champ.h"
#include "store/layouts/modeles.h"

namespace vdx {

// One posology of a product. Key (9): CodeCIP + Rang, the CodePosologie.
// The update's row keeps the rank aside; it is stored at 8, where the key
// and the readers take it, and the row's long text goes to VDXPTEXT.
namespace VDXPPROD {
inline constexpr uint32_t Longueur = 120;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Rang, 8, 4);  // two characters
VDX_ENTIER(CodeTerrain, 12);
VDX_ENTIER(Implicite, 16);
VDX_ENTIER(CodeAMM, 20);
VDX_ENTIER(CodeNature, 24);
VDX_ENTIER(CodeVoie, 28);
VDX_ENTIER(CodeProfil, 32);
VDX_REEL(DoseMin, 36);
VDX_REEL(DoseMax, 40);
VDX_ENTIER(CodeUnite, 44);
VDX_REEL(QuantiteRef, 48);
VDX_ENTIER(Conversion, 52);
VDX_TEXTE(TypeRef, 56, 4);
VDX_ENTIER(PrisesMin, 60);
VDX_ENTIER(PrisesMax, 64);
VDX_ENTIER(Intervalle, 68);
VDX_ENTIER(CodePeriode, 72);
VDX_ENTIER(CodeMoment, 76);
VDX_ENTIER(DureeMin, 80);
VDX_ENTIER(DureeMax, 84);
VDX_ENTIER(CodeDuree, 88);
VDX_REEL(DoseMaximum, 92);
VDX_ENTIER(MaximumRapporte, 96);
VDX_ENTIER(CodePeriodeMaximum, 100);
VDX_ENTIER(CodeSpecification, 104);
VDX_ENTIER(CodeSpecification2, 108);
VDX_ENTIER(NombreModeles, 112);
}  // namespace VDXPPROD

// The free text of a posology: a variable record that holds the text alone.
// Key (outside the record): CodePosologie (9).
namespace VDXPTEXT {
VDX_TEXTE_PLEIN(CodePosologie, 0, 9);
}  // namespace VDXPTEXT

// The patient a posology is for. Key: CodeTerrain.
namespace VDXPPTER {
inline constexpr uint32_t Longueur = 36;
VDX_ENTIER(CodeTerrain, 0);
VDX_TEXTE(Terrain, 4, 4);
VDX_REEL(AgeMin, 8);
VDX_TEXTE(UniteAgeMin, 12, 4);
VDX_REEL(AgeMax, 16);
VDX_TEXTE(UniteAgeMax, 20, 4);
VDX_REEL(PoidsMin, 24);
VDX_REEL(PoidsMax, 28);
}  // namespace VDXPPTER

namespace VDXPUPRI = ModeleMot;          // units of take
namespace VDXPIND = ModeleCodeLibelle;   // indications
namespace VDXPNAT = ModeleCodeLibelle;   // natures of the treatment
namespace VDXPVOI = ModeleCodeLibelle;   // routes
namespace VDXPSPE = ModeleCodeLibelle;   // specifications of the take
namespace VDXPDUR = ModeleCodeLibelle;   // periods and durations

// Patient profiles. Key: Code.
// The update's row keeps the kind of profile aside as a text: it is the
// integer TypeProfil at 56.
namespace VDXPPRO {
inline constexpr uint32_t Longueur = 84;
VDX_ENTIER(Code, 0);
VDX_TEXTE(Libelle, 4, 52);
VDX_ENTIER(TypeProfil, 56);
VDX_TEXTE(ValeurProfil, 60, 24);
}  // namespace VDXPPRO

// Moments of the take. Key: Code.
namespace VDXPMOM {
inline constexpr uint32_t Longueur = 64;
VDX_ENTIER(Code, 0);
VDX_TEXTE(Libelle, 4, 52);
VDX_REEL(Multiplicateur, 56);  // of the quantity, 0 when there is none
}  // namespace VDXPMOM

// Limits of a product for a terrain. The record begins with its key, the
// seven digits of CodeCIP and the terrain letter, then the 25 fields of the
// limits: eleven for the first unit, eleven for the second, three durations.
// Key (8): Cle.
namespace VDXPMAX {
inline constexpr uint32_t Longueur = 112;
VDX_TEXTE(Cle, 0, 12);
VDX_REEL(RecoMin, 12);
VDX_REEL(RecoMax, 16);
VDX_REEL(RecoMinKg, 20);
VDX_REEL(RecoMaxKg, 24);
VDX_REEL(BaseKg, 28);
VDX_REEL(RecoMinM2, 32);
VDX_REEL(RecoMaxM2, 36);
VDX_REEL(BaseM2, 40);
VDX_REEL(MaxJour, 44);
VDX_REEL(MaxKg, 48);
VDX_REEL(MaxM2, 52);
VDX_REEL(RecoMinUnite2, 56);
VDX_REEL(RecoMaxUnite2, 60);
VDX_REEL(RecoMinKgUnite2, 64);
VDX_REEL(RecoMaxKgUnite2, 68);
VDX_REEL(BaseKgUnite2, 72);
VDX_REEL(RecoMinM2Unite2, 76);
VDX_REEL(RecoMaxM2Unite2, 80);
VDX_REEL(BaseM2Unite2, 84);
VDX_REEL(MaxJourUnite2, 88);
VDX_REEL(MaxKgUnite2, 92);
VDX_REEL(MaxM2Unite2, 96);
VDX_ENTIER(DureeRecoMin, 100);
VDX_ENTIER(DureeRecoMax, 104);
VDX_ENTIER(DureeMaximum, 108);
}  // namespace VDXPMAX

// Factor between two duration codes. Key (7): Cle, the two codes on three
// characters each ("040", "-01"), and its NUL.
namespace VDXPDURC {
inline constexpr uint32_t Longueur = 12;
VDX_TEXTE(Cle, 0, 8);
VDX_REEL(Facteur, 8);
}  // namespace VDXPDURC

// The opposable medical references (RMO) of a product or a class.
namespace VDXRMOC = ModeleRecommandation;
namespace VDXRMOT = ModeleVocabulaire;

}  // namespace vdx
