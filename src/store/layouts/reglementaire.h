// ATC classes, long-term illnesses, codes, links to documents and other
// regulatory lists (the VDXY tables).
#pragma once

#include <cstdint>

#include "store/champ.h"
#include "store/layouts/modeles.h"

namespace vdx {

namespace VDXYATC = ModeleClasse;
namespace VDXYATCP = ModeleClasseProduit;

// The opinions of the transparency commission on a speciality: the medical
// service rendered (SMR, Avis "S") and its improvement (ASMR, Avis "A").
// Key (32): CodeCIS + Avis + Date (AAAAMMJJ) + Dossier, so the last key of
// a speciality and a kind is its latest opinion.
namespace VDXYTRF {
inline constexpr uint32_t Longueur = 196;
VDX_TEXTE(CodeCIS, 0, 9);
VDX_TEXTE(Avis, 9, 2);
VDX_TEXTE(Date, 11, 9);
VDX_TEXTE(Dossier, 20, 16);
VDX_TEXTE(Niveau, 36, 64);  // the levels of one opinion for its indications, joined by ", "
VDX_TEXTE(Motif, 100, 96);
inline constexpr char AvisSMR[] = "S", AvisASMR[] = "A";
}  // namespace VDXYTRF
namespace VDXYTRFT = ModeleTexte;
namespace VDXYTRPF = ModeleLien;

// Pregnancy data of substances. The key numbers the rows of a substance by
// Rang, two digits held in the free bytes 4 to 7.
// Key (7): CodeSubstance in decimal on five digits + Rang.
namespace VDXYGRSS {
inline constexpr uint32_t Longueur = 300;
VDX_ENTIER(CodeSubstance, 0);
VDX_TEXTE(Rang, 4, 4);
VDX_TEXTE_PLEIN(CodeVoie, 8, 4);  // empty: all routes
VDX_ENTIER(Partenaire1, 12);
VDX_ENTIER(Partenaire2, 16);
VDX_ENTIER(Partenaire3, 20);
VDX_TEXTE(LibelleGrossesse, 24, 12);
VDX_ENTIER(NiveauGrossesse, 36);
VDX_ENTIER(PeriodeGrossesse, 40);
VDX_TEXTE(TexteGrossesse, 44, 256);
}  // namespace VDXYGRSS

// Long-term illnesses. Key: Code (2).
namespace VDXYALD {
inline constexpr uint32_t Longueur = 128;
VDX_TEXTE(Code, 0, 3);
VDX_TEXTE(Libelle, 3, 125);
}  // namespace VDXYALD

namespace VDXYALDC = ModeleLien;

// Links to documents: the title of the link, the name of its document in
// VDXYLBIN, its date (JJ/MM/AAAA). Key: NumeroLien (five digits).
namespace VDXYLIEN {
inline constexpr uint32_t Longueur = 204;
VDX_TEXTE(NumeroLien, 0, 6);
VDX_TEXTE(Libelle, 8, 120);
VDX_TEXTE(NomDocument, 128, 64);
VDX_TEXTE(DateLien, 192, 11);
}  // namespace VDXYLIEN

// Links of a product, with the kind of each. Key (12): CodeCIP + NumeroLien.
namespace VDXYLCIP {
inline constexpr uint32_t Longueur = 20;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(NumeroLien, 8, 6);
VDX_ENTIER(TypeLien, 16);

// The kinds of link: a document, a transparency sheet, the product's own
// monograph (which replaces the assembled one).
inline constexpr int32_t LienDocument = 1;
inline constexpr int32_t LienTransparence = 2;
inline constexpr int32_t LienMonographie = 3;
}  // namespace VDXYLCIP

// The bytes of a document. Key (outside the record): NomDocument.
namespace VDXYLBIN {
VDX_TEXTE_PLEIN(NomDocument, 0, 64);
}  // namespace VDXYLBIN

// Substances of concern in a heat wave.
// Key (6): CodeSubstance in decimal on five digits + LettreCanicule.
namespace VDXYCACO {
inline constexpr uint32_t Longueur = 8;
VDX_ENTIER(CodeSubstance, 0);
VDX_TEXTE(LettreCanicule, 4, 2);
}  // namespace VDXYCACO

// Categories of the heat wave. Key (5): LettreCanicule padded with blanks.
namespace VDXYCAAR {
inline constexpr uint32_t Longueur = 88;
VDX_TEXTE(LettreCanicule, 0, 6);
VDX_TEXTE(Libelle, 6, 82);
}  // namespace VDXYCAAR

// Specialities (CIS codes) and their labels. Key: CodeCIS (8).
namespace VDXYCIS {
inline constexpr uint32_t Longueur = 128;
VDX_TEXTE(CodeCIS, 0, 9);
VDX_TEXTE(Libelle, 9, 119);
}  // namespace VDXYCIS

// Speciality of a product. Keys: CodeCIP + CodeCIS; CodeCIS + CodeCIP.
namespace VDXYCSCP {
inline constexpr uint32_t Longueur = 18;
VDX_TEXTE(CodeCIS, 0, 9);
VDX_TEXTE(CodeCIP, 9, 8);
}  // namespace VDXYCSCP

namespace VDXYPGEN = ModeleVocabulaire;
namespace VDXYPGEC = ModeleLien;
// The recommendations of the health authorities.
namespace VDXYMEDR = ModeleRecommandation;

// The adverse effects of a product, a row an effect in the order of a rank
// (three digits): its organ class, its frequency ("très fréquent",
// "fréquent", "peu fréquent", "rare", "très rare", "fréquence
// indéterminée") and its label. Key (10): CodeCIP + Rang.
namespace VDXYAMED {
inline constexpr uint32_t Longueur = 280;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Rang, 8, 4);
VDX_TEXTE(ClasseOrgane, 12, 112);
VDX_TEXTE(Frequence, 124, 28);
VDX_TEXTE(Libelle, 152, 128);
}  // namespace VDXYAMED

// Prescription lines by common name. Keys: Code; LibelleCle then Code.
namespace VDXYDCI {
inline constexpr uint32_t Longueur = 264;
VDX_TEXTE(Code, 0, 8);
VDX_TEXTE(Libelle, 8, 128);
VDX_TEXTE(LibelleCle, 136, 128);
}  // namespace VDXYDCI

// Products of a line by common name.
// Keys: CodeDCI + CodeCIP; CodeCIP + CodeDCI.
namespace VDXYDCIP {
inline constexpr uint32_t Longueur = 16;
VDX_TEXTE(CodeDCI, 0, 8);
VDX_TEXTE(CodeCIP, 8, 8);
}  // namespace VDXYDCIP

}  // namespace vdx
