// Identification of a product: its form, dosage, presentation, containers
// and units, and its routes.
#pragma once

#include <cstdint>

#include "store/champ.h"
#include "store/layouts/modeles.h"

namespace vdx {

// Key: CodeCIP. The fields from 88 are named by what the posology reads of
// them: a container, then two units of take, each with a flag that it has a
// contents, its ratio, its rounding code (Secabilite) and its flag of whole
// takes.
namespace VDXIDPRO {
inline constexpr uint32_t Longueur = 140;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Denomination, 8, 31);
VDX_TEXTE(Dosage, 39, 26);
VDX_TEXTE(CodeForme, 65, 5);  // four characters, padded with blanks
VDX_ENTIER(CodePresentation, 72);
VDX_REEL(QuantitePresentation, 76);
VDX_ENTIER(CodeUnitePresentation, 80);
VDX_REEL(QuantiteUnitePresentation, 84);
VDX_ENTIER(CodeContenant, 88);
VDX_ENTIER(CodeUnitePrise, 92);
VDX_ENTIER(AvecContenance, 96);
VDX_REEL(Rapport, 100);
VDX_ENTIER(Secabilite, 104);
VDX_ENTIER(PrisesEntieres, 108);
VDX_ENTIER(CodeUnitePrise2, 112);
VDX_ENTIER(AvecContenance2, 116);
VDX_REEL(Rapport2, 120);
VDX_ENTIER(Secabilite2, 124);
VDX_ENTIER(PrisesEntieres2, 128);
VDX_ENTIER(CodeComplementaire, 132);  // an integer of the update row, read by nothing
}  // namespace VDXIDPRO

// Pharmaceutical forms. Keys: CodeForme (4, padded with blanks); LibelleCle.
namespace VDXIDFOR {
inline constexpr uint32_t Longueur = 169;
VDX_TEXTE(CodeForme, 0, 5);
VDX_TEXTE(Libelle, 5, 81);
VDX_TEXTE(LibelleCle, 86, 83);
}  // namespace VDXIDFOR

// Products of a form. Key (11): CodeForme (4, padded with blanks) + CodeCIP.
namespace VDXIDFOP {
inline constexpr uint32_t Longueur = 15;
VDX_TEXTE(CodeForme, 0, 5);
VDX_TEXTE(CodeCIP, 5, 8);
}  // namespace VDXIDFOP

namespace VDXIDPRE = ModeleMot;  // forms of presentation
namespace VDXIDUPR = ModeleMot;  // units of presentation
namespace VDXIDCON = ModeleMot;  // containers
namespace VDXIDUCO = ModeleCodeLibelle;  // units of containers

// Routes of a product: only the key is read.
// Key (16): CodeCIP + CodeVoie, NUL-padded.
namespace VDXIDPVO {
inline constexpr uint32_t Longueur = 14;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(CodeVoie, 8, 6);
}  // namespace VDXIDPVO

// Routes of administration. Key: CodeVoie (4).
namespace VDXIDVOI {
inline constexpr uint32_t Longueur = 56;
VDX_TEXTE_PLEIN(CodeVoie, 0, 4);
VDX_TEXTE(Libelle, 4, 51);
}  // namespace VDXIDVOI

}  // namespace vdx
