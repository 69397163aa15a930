// Interaction classes, their links to substances, their hierarchy, and the
// couples of classes.
#pragma once

#include <cstdint>

#include "store/champ.h"

namespace vdx {

// Interaction classes. Key: CodeClasse.
namespace VDXZICLA {
inline constexpr uint32_t Longueur = 92;
VDX_ENTIER(CodeClasse, 0);
VDX_TEXTE(Libelle, 4, 80);
VDX_ENTIER(ClasseActive, 84);
VDX_TEXTE(Zone88, 88, 4);
}  // namespace VDXZICLA

// Substance to class: only the key is read.
// Key: CodeSubstance + CodeSubstanceAssociee + CodeClasse.
namespace VDXZICLC {
inline constexpr uint32_t Longueur = 16;
VDX_ENTIER(CodeSubstance, 0);
VDX_ENTIER(CodeSubstanceAssociee, 4);
VDX_ENTIER(CodeClasse, 8);
}  // namespace VDXZICLC

// Class hierarchy: only the key is read. Key: CodeClasse + CodeClassePere.
namespace VDXZICLP {
inline constexpr uint32_t Longueur = 12;
VDX_ENTIER(CodeClasse, 0);
VDX_ENTIER(CodeClassePere, 4);
}  // namespace VDXZICLP

// Severities. Key: Code.
namespace VDXZIGRA {
inline constexpr uint32_t Longueur = 112;
VDX_ENTIER(Code, 0);
VDX_TEXTE(LibelleGravite, 4, 104);
VDX_ENTIER(Niveau, 108);
}  // namespace VDXZIGRA

// Kinds of interaction. Key: Code.
namespace VDXZITYP {
inline constexpr uint32_t Longueur = 88;
VDX_ENTIER(Code, 0);
VDX_TEXTE(TexteType, 4, 84);  // a template with "$1" and "$2"
}  // namespace VDXZITYP

// Couples of classes: a fixed part of 1044 bytes, then the four texts one
// behind the other, not NUL-terminated, their lengths in the fixed part.
// Key: ClasseA + ClasseB + Numero.
// The update's row carries the four texts in the fields it drops before
// Genre.
namespace VDXZICOU {
inline constexpr uint32_t Longueur = 1044;
VDX_ENTIER(ClasseA, 0);
VDX_ENTIER(ClasseB, 4);
VDX_ENTIER(Numero, 8);
VDX_TEXTE(VoiesA, 12, 64);
VDX_TEXTE(VoiesB, 76, 64);
VDX_TEXTE(SubstancesA, 140, 256);
VDX_TEXTE(FiltreA, 396, 2);
VDX_TEXTE(SubstancesB, 398, 256);
VDX_TEXTE(FiltreB, 654, 2);
VDX_ENTIER(CodeType, 656);
VDX_ENTIER(Sens, 660);
VDX_ENTIER(CodeGravite, 664);
VDX_TEXTE(Zone668, 668, 11);
VDX_TEXTE(Zone679, 679, 11);
VDX_TEXTE(Reference1, 690, 28);
VDX_TEXTE(Reference2, 718, 28);
VDX_TEXTE(TermesCondition, 746, 258);
VDX_ENTIER(Genre, 1004);
VDX_ENTIER(LongueurTexte1, 1008);
VDX_ENTIER(LongueurTexte2, 1012);
VDX_ENTIER(LongueurTexte3, 1016);
VDX_ENTIER(LongueurTexte4, 1020);
}  // namespace VDXZICOU

}  // namespace vdx
