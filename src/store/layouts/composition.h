// Terms of the marketing authorisation, pathology vocabularies, substances,
// components and their links (the VDXV tables).
#pragma once

#include <cstdint>

#include "store/champ.h"
#include "store/layouts/modeles.h"

namespace vdx {

// The vocabulary of terms. Keys: CodeTerme + TypeAMM (11); the folded
// label LibelleMajuscules then the first key, twice: the searches of terms
// and of allergy terms each walk one, and no field tells the allergy terms
// apart, so both file every term.
// The update's row keeps an integer and a text aside: TypeAnalyse and
// TexteAnalyse; its last field, dropped in the row, is TypeAMM at 274.
namespace VDXVAMM {
inline constexpr uint32_t Longueur = 336;
VDX_TEXTE(CodeTerme, 0, 11);
VDX_TEXTE(Libelle, 11, 129);
VDX_ENTIER(Zone140, 140);
VDX_TEXTE(LibelleMajuscules, 144, 129);
VDX_TEXTE_PLEIN(SexeTerme, 273, 1);  // "M", "F", or NUL for no condition
// The digit of the key (1 indication, 2 contra-indication, 3 precaution,
// 4 adverse effect): the row keeps it aside, the record holds it in bytes
// left free so that the key can be read from the record.
VDX_TEXTE(TypeAMM, 274, 2);
VDX_ENTIER(AllaitementTerme, 276);
VDX_ENTIER(AgeMin, 280);
VDX_ENTIER(AgeMax, 284);
VDX_ENTIER(PoidsMin, 288);
VDX_ENTIER(PoidsMax, 292);
VDX_ENTIER(GrossesseMin, 296);
VDX_ENTIER(GrossesseMax, 300);
VDX_ENTIER(Zone304, 304);
VDX_ENTIER(TypeAnalyse, 308);
VDX_TEXTE(TexteAnalyse, 312, 24);
}  // namespace VDXVAMM

// Terms of a product. Keys (18): CodeCIP + TypeAMM + CodeTerme;
// CodeTerme + TypeAMM + CodeCIP.
// The update's row keeps its second field aside: it is TypeAMM, at 8.
namespace VDXVAMPC {
inline constexpr uint32_t Longueur = 36;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(TypeAMM, 8, 2);
VDX_TEXTE(CodeTerme, 17, 11);
VDX_ENTIER(NiveauLien, 28);
}  // namespace VDXVAMPC

// Texts of the marketing authorisation: 14 sections, chapter n being the
// plain text Texte<n> and its RTF Rtf<n>.
namespace VDXVAMPT = ModeleChapitres;
// Further texts: 28 sections in the same pairs.
namespace VDXVAMST = ModeleChapitres;

// Links of a term with codes. The row keeps the type of link aside; the
// record holds it in the free bytes 11 to 13.
// Keys (22): CodeTerme + TypeLien + CodeLie; CodeLie (padded with blanks to
// 10) + TypeLien + CodeTerme.
// The update's row keeps the kind of link aside: it is TypeLien, at 11.
namespace VDXVAMMC {
inline constexpr uint32_t Longueur = 27;
VDX_TEXTE(CodeTerme, 0, 11);
VDX_TEXTE(TypeLien, 11, 3);  // "01" to "04"
VDX_TEXTE(CodeLie, 14, 13);
inline constexpr uint16_t LongueurCodeLieCle = 10;  // CodeLie in the keys
}  // namespace VDXVAMMC

namespace VDXVCISP = ModeleVocabulaire;  // CISP codes
namespace VDXVCIM = ModeleVocabulaire;   // CIM10 codes
namespace VDXVCIMA = ModeleVocabulaire;  // CIM10 chapters, codes under three characters

// From CISP to CIM10. Key: CodeCISP + CodeCIM10.
namespace VDXVCICI {
inline constexpr uint32_t Longueur = 22;
VDX_TEXTE(CodeCISP, 0, 11);
VDX_TEXTE(CodeCIM10, 11, 11);
}  // namespace VDXVCICI

// Substances. Keys: CodeSubstance; the label folded by MajusculeSansAccent
// then the code.
namespace VDXVPA {
inline constexpr uint32_t Longueur = 64;
VDX_ENTIER(CodeSubstance, 0);
VDX_TEXTE(Libelle, 4, 52);
VDX_ENTIER(Interactions, 56);  // 0: the substance takes no part in interactions
}  // namespace VDXVPA

// Substances, excipients and concepts, by number. The 64 bytes of the
// update's record hold two labels: the name, and the label under which an
// excipient with known effect is searched (empty for the others).
// Keys: CodeSubstance; Libelle folded then the code; LibelleEEN folded then
// the code, for the records that have one.
namespace VDXVEXC {
inline constexpr uint32_t Longueur = 64;
VDX_ENTIER(CodeSubstance, 0);
VDX_TEXTE(Libelle, 4, 30);
VDX_TEXTE(LibelleEEN, 34, 30);
}  // namespace VDXVEXC

// Quantity bases of a composition. Key: Code.
namespace VDXVPAE {
inline constexpr uint32_t Longueur = 32;
VDX_ENTIER(Code, 0);
VDX_TEXTE(LibelleExprime, 4, 28);
}  // namespace VDXVPAE

// Units of quantity. Key: Code.
namespace VDXVPAU {
inline constexpr uint32_t Longueur = 28;
VDX_ENTIER(Code, 0);
VDX_TEXTE(LibelleUnite, 4, 24);
}  // namespace VDXVPAU

// The text of the composition of a product: CodeExprime, then the text to
// the end of the record. Key (outside the record): CodeCIP.
namespace VDXVCOMG {
inline constexpr uint32_t Longueur = 4;
VDX_TEXTE_PLEIN(CodeCIP, 0, 7);
VDX_ENTIER(CodeExprime, 0);
}  // namespace VDXVCOMG

// Components of a product. The row keeps the rank of the component aside;
// the record holds it at 8 and the key ends with it, so that the components
// of a product keep one key each, in their order.
// Key (10): CodeCIP + Rang.
// The update's row keeps the rank aside; it is stored at 8, where the key
// and the readers take it.
namespace VDXVCOMP {
inline constexpr uint32_t Longueur = 116;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Rang, 8, 4);
VDX_ENTIER(CodeSubstance, 12);
VDX_TEXTE(QuantiteTexte, 16, 84);
VDX_REEL(Quantite, 100);
VDX_ENTIER(CodeUnite, 104);
VDX_ENTIER(Interactions, 108);  // 0: the row takes no part in interactions
}  // namespace VDXVCOMP

// The second list of components, with the same head. Key (10): CodeCIP + Rang.
// The update's row keeps the rank aside; it is stored at 8 as in VDXVCOMP.
namespace VDXVCOME {
inline constexpr uint32_t Longueur = 112;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Rang, 8, 4);
VDX_ENTIER(CodeSubstance, 12);
VDX_TEXTE(QuantiteTexte, 16, 84);
VDX_ENTIER(Zone100, 100);
VDX_ENTIER(Interactions, 104);
// The text of an excipient with known effect holds it.
inline constexpr char MarqueEffetNotoire = '*';
}  // namespace VDXVCOME

namespace VDXVPAP = ModeleSubstanceProduit;   // products of an active substance
namespace VDXVEXCP = ModeleSubstanceProduit;  // products of an excipient

// Equivalent terms: only the keys are read.
// Keys: CodeTerme + CodeEquivalent; CodeEquivalent + CodeTerme.
namespace VDXVAMME {
inline constexpr uint32_t Longueur = 22;
VDX_TEXTE(CodeTerme, 0, 11);
VDX_TEXTE(CodeEquivalent, 11, 11);
}  // namespace VDXVAMME

// Dates of the chapters of a product. Key (9): CodeCIP + CodeChapitre.
namespace VDXVAMDT {
inline constexpr uint32_t Longueur = 22;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(CodeChapitre, 8, 3);   // two digits
VDX_TEXTE(DateChapitre, 11, 11);  // AAAA MM JJ with a separator after year and month
}  // namespace VDXVAMDT

namespace VDXVPAAM = ModeleLien;
namespace VDXVPREI = ModeleVocabulaire;

}  // namespace vdx
