// The texts of a product's marketing authorisation: its indexed terms of
// each kind, the stored chapters one by one, and the dates of the chapters.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/lignes.h"

namespace vdx {

// TypeAMM: 1 indications, 2 contra-indications, 3 precautions, 4 adverse
// effects.
inline constexpr int32_t TypeAMMMin = 1, TypeAMMMax = 4;

// A term of a product, with the level of its link; the label of VDXVAMM, or
// "Mot Clé X inexistant." for a term it lacks.
struct TermeProduit {
    int32_t NiveauLien = 0;
    std::string CodeTerme;
    std::string Libelle;
};
VDX_LIGNE(TermeProduit, NiveauLien, CodeTerme, Libelle);
// In key order. Throws Echec: 0 when the product has no term of the kind,
// -500.
std::vector<TermeProduit> TermesProduit(std::string_view cip, int32_t type);

// The two tables of chapters: the main texts (VDXVAMPT), the further texts
// (VDXVAMST).
enum class TextesAMM { Principaux, Complementaires };
int ChapitresDe(TextesAMM textes);  // how many a reader may ask for

// A chapter: its RTF and that RTF turned into text; both empty for a
// product without record or a chapter without text. Throws Echec(-500).
struct ChapitreAMM {
    std::string Texte;
    std::string Rtf;
};
VDX_LIGNE(ChapitreAMM, Texte, Rtf);
ChapitreAMM ChapitreStocke(TextesAMM textes, std::string_view cip, int chapitre);
// The record of a product in one of the tables, none when it has none.
std::optional<std::string> FicheChapitres(TextesAMM textes, std::string_view cip);

// The date of a chapter code (0 to 99) as VDXVAMDT keeps it, year first
// with its separators ("2017/03/15"); none when it has none. Throws
// Echec(-500).
inline constexpr int32_t CodeChapitreMax = 99;
std::optional<std::string> DateChapitre(std::string_view cip, int32_t chapitre);

}  // namespace vdx
