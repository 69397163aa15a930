// Biology, notices, aspects, texts of pharmacy products, incompatibilities.
#pragma once

#include <cstdint>

#include "store/champ.h"
#include "store/layouts/formes.h"

namespace vdx {

namespace VDXZBEXA = FormeVocabulaire;  // examinations
namespace VDXZBEXI = FormeVocabulaire;  // items
namespace VDXZBTEM = FormeVocabulaire;
namespace VDXZBITU = FormeVocabulaire;
namespace VDXZBUNI = FormeVocabulaire;  // units

// Notices: sections Texte, Rtf and Html (the notice as HTML is section 3).
namespace VDXZNOT = FormeChapitres;

namespace VDXZMOVI = FormeVocabulaire;
namespace VDXZASPT = FormeVocabulaire;
namespace VDXZASPI = FormeVocabulaire;

// Texts of a pharmacy product. Key (12): CodeCIP + NumeroTexte (five digits).
namespace VDXZAPPC {
inline constexpr uint32_t Longueur = 14;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(NumeroTexte, 8, 6);
}  // namespace VDXZAPPC

// A text of a pharmacy product: nine sections behind the header of lengths,
// as many as the titles of its longest kind. Key (outside the record):
// NumeroTexte.
namespace VDXZAPTX {
inline constexpr uint32_t Longueur = 128;
VDX_TEXTE_PLEIN(NumeroTexte, 0, 5);
}  // namespace VDXZAPTX

// Pictures of a notice: the bytes of the picture.
// Key (outside the record): CodeCIP + NomImage, the picture's file name.
namespace VDXZNOTG {
VDX_TEXTE_PLEIN(CodeCIP, 0, 7);
VDX_TEXTE_PLEIN(NomImage, 7, 57);
}  // namespace VDXZNOTG

namespace VDXZONCO = FormeVocabulaire;

namespace VDXIPC = FormeVocabulaire;
namespace VDXIPCTA = FormeTexte;
namespace VDXIPCTB = FormeTexte;
namespace VDXIPCCC = FormeTexte;

}  // namespace vdx
