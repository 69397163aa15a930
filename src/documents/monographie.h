// The monograph of a product as one HTML page: a head, a summary of links
// and the chapters in their fixed order, stored texts of the marketing
// authorisation beside the chapters made from the product tables; its short
// form; the page of a product's flags. Pages are in code page 1252, the
// character table run over them, with no declaration of their character
// set.
#pragma once

#include <string>
#include <string_view>

#include "session/contexte.h"

namespace vdx {

enum class FormeMonographie {
    Complete,  // every chapter
    Courte,    // the made chapters, the four kinds of terms, the posologies, the regulatory data
};

// The page of a seven-digit code. A code no table holds gives the chapters
// it can make and no title; a line by common name its products and the
// chapters made for it. A product with a monograph of its own among its
// linked documents gets that document as it is kept, behind the link to
// "monographie.css" and a style block, in place of the complete form. `feuilleStyle`, when not empty, is linked as the
// stylesheet. Throws Echec(-500).
std::string PageMonographie(const Contexte& contexte, const std::string& cip, FormeMonographie forme,
                            std::string_view feuilleStyle);

// The product's flags in one table: "Referent", "générique", "Dopant",
// "Hospitalier", "Canicule", "Recommandations", "Mediel", each "OUI" or
// "NON". Throws Echec(-500).
std::string PageInfo(const Contexte& contexte, const std::string& cip, std::string_view feuilleStyle);

// Writes a page in one block into `fichier`, opened with "w+b"; a file that
// can't be opened gets nothing, and that is no failure.
void EcritPage(const char* fichier, std::string_view page);
// The bytes into a file opened with "w+b": whether they were all written and
// the file closed without failure.
bool EcritFichier(const char* fichier, std::string_view octets);

}  // namespace vdx
