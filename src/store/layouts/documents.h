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

namespace VDXZMOVI = ModeleVocabulaire;
namespace VDXZASPT = ModeleVocabulaire;
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

namespace VDXZONCO = ModeleVocabulaire;

namespace VDXIPC = ModeleVocabulaire;
namespace VDXIPCTA = ModeleTexte;
namespace VDXIPCTB = ModeleTexte;
namespace VDXIPCCC = ModeleTexte;

}  // namespace vdx
