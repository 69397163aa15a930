// Record shapes shared by several tables. A table of such a shape is an
// alias of its namespace: VDXIDPRE::Libelle is ModeleMot::Libelle.
//
// The tables whose records no reader of the library describes get one of the
// open shapes below, chosen to hold what a reader of such a table needs: a
// code, a label and its folded form for a vocabulary, two codes for a link,
// a code and a text for a variable table of texts.
#pragma once

#include <cstdint>

#include "store/champ.h"

namespace vdx {

// A word of the identification and posology: singular and plural.
// Key: Code.
namespace ModeleMot {
inline constexpr uint32_t Longueur = 108;
VDX_ENTIER(Code, 0);
VDX_TEXTE(Libelle, 4, 51);
VDX_TEXTE(LibellePluriel, 55, 53);
}  // namespace ModeleMot

// A short vocabulary of the posology and of the identification.
// Key: Code.
namespace ModeleCodeLibelle {
inline constexpr uint32_t Longueur = 60;
VDX_ENTIER(Code, 0);
VDX_TEXTE(Libelle, 4, 56);
}  // namespace ModeleCodeLibelle

// Therapeutic and ATC classes, rows "|CLA|" and "|ATC|".
// Keys: CodeClasse; LibelleCle folded by MajusculeSansAccent (its first 26 bytes).
namespace ModeleClasse {
inline constexpr uint32_t Longueur = 172;
VDX_TEXTE(CodeClasse, 0, 8);
VDX_TEXTE(Libelle, 8, 81);
VDX_TEXTE(LibelleCle, 89, 83);  // folded label; ends with "*" for a class that is no equivalence class
inline constexpr uint16_t LongueurCleLibelle = 26;  // of the label key, what the step search of classes pads to
}  // namespace ModeleClasse

// Products of a class, rows "|CLAP|" and "|ATCP|". The class code is padded
// with blanks to seven characters in both keys.
// Keys: CodeClasse + CodeCIP; CodeCIP + CodeClasse.
namespace ModeleClasseProduit {
inline constexpr uint32_t Longueur = 18;
VDX_TEXTE(CodeClasse, 0, 8);
VDX_TEXTE(CodeCIP, 8, 8);
}  // namespace ModeleClasseProduit

// Products of a substance, reverse indexes of the composition: only the key
// is read. The row keeps the substance code aside; the record holds it at 0
// so that the key can be read from the record.
// Key (16): CodeSubstance (five digits) + CodeCIP.
namespace ModeleSubstanceProduit {
inline constexpr uint32_t Longueur = 16;
VDX_TEXTE(CodeSubstance, 0, 6);
VDX_TEXTE(CodeCIP, 6, 8);
}  // namespace ModeleSubstanceProduit

// Open shape: a vocabulary.
// Keys: Code (10); for a table with a further key, LibelleCle (folded by
// MajusculeSansAccent) then Code, so that equal labels keep one key each and
// the walk is in label order.
namespace ModeleVocabulaire {
inline constexpr uint32_t Longueur = 277;
VDX_TEXTE(Code, 0, 11);
VDX_TEXTE(Libelle, 11, 133);
VDX_TEXTE(LibelleCle, 144, 133);
}  // namespace ModeleVocabulaire

// Recommendations attached to a product or to a therapeutic class, under
// its code (a CodeCIP or a class code), in the order of a rank (three
// digits): who issued it, its date (JJ/MM/AAAA), title and text.
// Key (13): Code + Rang.
namespace ModeleRecommandation {
inline constexpr uint32_t Longueur = 736;
VDX_TEXTE(Code, 0, 11);
VDX_TEXTE(Rang, 11, 4);
VDX_TEXTE(Source, 15, 64);
VDX_TEXTE(Date, 79, 11);
VDX_TEXTE(Titre, 90, 134);
VDX_TEXTE(Texte, 224, 512);
}  // namespace ModeleRecommandation

// Open shape: a link between two codes.
// Keys: Code + CodeLie; for a table with a further key, CodeLie + Code.
namespace ModeleLien {
inline constexpr uint32_t Longueur = 22;
VDX_TEXTE(Code, 0, 11);
VDX_TEXTE(CodeLie, 11, 11);
}  // namespace ModeleLien

// Open shape: a link between a code and a concept of the allergy thesaurus,
// two integers as the other tables of concepts.
// Key: Code + CodeConcept.
namespace ModeleConcept {
inline constexpr uint32_t Longueur = 8;
VDX_ENTIER(Code, 0);
VDX_ENTIER(CodeConcept, 4);
}  // namespace ModeleConcept

// Open shape: a text under a code, in a variable record that holds the text
// alone. Key (outside the record): Code.
namespace ModeleTexte {
VDX_TEXTE_PLEIN(Code, 0, 10);
}  // namespace ModeleTexte

// Chapter records under a product (header of lengths, then the sections).
// Key (outside the record): CodeCIP.
namespace ModeleChapitres {
inline constexpr uint32_t Longueur = 128;
VDX_TEXTE_PLEIN(CodeCIP, 0, 7);
}  // namespace ModeleChapitres

}  // namespace vdx
