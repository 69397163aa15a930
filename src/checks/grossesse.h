// The pregnancy control: for one product and a term of pregnancy, the
// advice that the pregnancy table gives on one of its substances, with the
// wording of its level and period and the product's own text on pregnancy.
// Internal: the reports of the checks call it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/lignes.h"
#include "session/tables.h"

namespace vdx {

// A row of ControleGrossesseAFSSAPS, its fields in the order of the host's
// record: five strings, five integers, four strings.
struct AlerteGrossesse {
    std::string CodeProduit;
    std::string Inconnu;           // always "inconnu !"
    std::string LibelleGrossesse;
    std::string PhraseNiveau;
    std::string TexteProduit;      // chapter on pregnancy of VDXVAMPT, or empty without record
    int32_t CodeSubstance = 0;
    int32_t Partenaire1 = 0;
    int32_t Partenaire2 = 0;
    int32_t Partenaire3 = 0;
    int32_t NiveauGrossesse = 0;
    std::string Couleur;
    std::string NomNiveau;
    std::string Periode;
    std::string TexteGrossesse;
};

// The last week of pregnancy that a period covers.
inline constexpr int32_t DerniereSemaineGrossesse = 39;

// The tables that AlertesGrossesse reads: the pregnancy table, the texts
// of the marketing authorisation, and those of the composition, the
// synonyms and the routes of a product.
TablesOuvertes TablesGrossesse();

// The alerts of `codeCIP` (a CodeCIP already checked) at the term
// `grossesse` in weeks, 0 standing for every period; a term outside 0 to
// DerniereSemaineGrossesse gives none. A product gives at most one alert:
// the first row that passes, route by route of the product, substance by
// substance with the synonyms of each. Throws Echec(-500) when the store
// fails.
std::vector<AlerteGrossesse> AlertesGrossesse(std::string_view codeCIP, int32_t grossesse);

VDX_LIGNE(AlerteGrossesse, CodeProduit, Inconnu, LibelleGrossesse, PhraseNiveau, TexteProduit, CodeSubstance,
          Partenaire1, Partenaire2, Partenaire3, NiveauGrossesse, Couleur, NomNiveau, Periode, TexteGrossesse);

}  // namespace vdx
