// Biology, notices, aspects, texts of pharmacy products, incompatibilities.
#pragma once

#include <cstdint>

#include "store/champ.h"
#include "store/layouts/modeles.h"

namespace vdx {

namespace VDXZBEXA = ModeleVocabulaire;  // examinations
namespace VDXZBEXI = ModeleVocabulaire;  // items
namespace VDXZBTEM = ModeleVocabulaire;
namespace VDXZBITU = ModeleVocabulaire;
namespace VDXZBUNI = ModeleVocabulaire;  // units

// Notices: sections Texte, Rtf and Html (the notice as HTML is section 3).
namespace VDXZNOT = ModeleChapitres;

// The sheets of a product that no public file gives, kept as rows under
// the product in the order of a rank (three digits), each a few texts.
// Key (10): CodeCIP + Rang.

// The accessories sold with a product (Relation "avec") or for it ("pour"):
// the accessory's code (a CodeCIP, or empty), label and a remark.
namespace VDXZMOVI {
inline constexpr uint32_t Longueur = 432;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Rang, 8, 4);
VDX_TEXTE(CodeAccessoire, 12, 16);
VDX_TEXTE(Libelle, 28, 128);
VDX_TEXTE(Relation, 156, 20);
VDX_TEXTE(Remarque, 176, 256);
}  // namespace VDXZMOVI

// The appearance of a product's unit: shape, colour, marks, scoring.
namespace VDXZASPT {
inline constexpr uint32_t Longueur = 300;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Rang, 8, 4);
VDX_TEXTE(Forme, 12, 64);
VDX_TEXTE(Couleur, 76, 64);
VDX_TEXTE(Marquage, 140, 128);
VDX_TEXTE(Secabilite, 268, 32);
}  // namespace VDXZASPT
namespace VDXZASPI = ModeleVocabulaire;

// Texts of a pharmacy product. Key (12): CodeCIP + NumeroTexte (five digits).
namespace VDXZAPPC {
inline constexpr uint32_t Longueur = 14;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(NumeroTexte, 8, 6);
}  // namespace VDXZAPPC

// A text of a pharmacy product: nine texts behind the header of lengths, as
// many as the titles of its longest kind, each in a pair of fields (the
// plain text, then its RTF), as the chapters of the texts of the marketing
// authorisation. Key (outside the record): NumeroTexte.
namespace VDXZAPTX {
inline constexpr uint32_t Longueur = 128;
VDX_TEXTE_PLEIN(NumeroTexte, 0, 5);
inline constexpr int Textes = 9;
}  // namespace VDXZAPTX

// Pictures of a notice: the bytes of the picture.
// Key (outside the record): CodeCIP + NomImage, the picture's file name.
namespace VDXZNOTG {
VDX_TEXTE_PLEIN(CodeCIP, 0, 7);
VDX_TEXTE_PLEIN(NomImage, 7, 57);
}  // namespace VDXZNOTG

// The reconstitution and stability of a cytotoxic product, a row a step
// ("reconstitution", "dilution"): its solvent, the concentration reached
// and how long and where it keeps.
namespace VDXZONCO {
inline constexpr uint32_t Longueur = 540;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Rang, 8, 4);
VDX_TEXTE(Etape, 12, 32);
VDX_TEXTE(Solvant, 44, 128);
VDX_TEXTE(Concentration, 172, 112);
VDX_TEXTE(Stabilite, 284, 256);
}  // namespace VDXZONCO

// The physico-chemical incompatibilities of injectables, a row a pair of
// sides under a condition. A side is a substance number on five digits, a
// CodeCIP (seven digits) or "*" for any product. Condition: "L" in the same
// line of infusion, "S" in the same syringe, "Y" at a Y-site. Niveau: 1
// incompatible, 2 to be avoided. A pair is filed once, in either order.
// Key (15): CodeA + CodeB + Condition.
namespace VDXIPC {
inline constexpr uint32_t Longueur = 420;
VDX_TEXTE(CodeA, 0, 8);
VDX_TEXTE(CodeB, 8, 8);
VDX_TEXTE(Condition, 16, 2);
VDX_ENTIER(Niveau, 20);
VDX_TEXTE(Texte, 24, 320);
VDX_TEXTE(Source, 344, 76);
inline constexpr char TouteSubstance[] = "*";
}  // namespace VDXIPC
namespace VDXIPCTA = ModeleTexte;
namespace VDXIPCTB = ModeleTexte;
namespace VDXIPCCC = ModeleTexte;

}  // namespace vdx
