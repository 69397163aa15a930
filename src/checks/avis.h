// Two advisories on one product, outside the checks of a prescription:
// whether it is to be watched in a heat wave, with the sentence that names
// the components that cause it; and its kosher rating.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

struct AvisCanicule {
    bool concerne = false;
    bool voieGenerale = false;  // given by a route of the whole body: else nothing was looked at
    std::string phrase;         // empty when not concerned
};
// The heat-wave advisory of a CodeCIP: its components and their synonyms
// looked up in VDXYCACO, each category named from VDXYCAAR. Throws
// Echec(-500).
AvisCanicule Canicule(const Contexte& contexte, const std::string& cip);

// The text of a kosher rating.
std::string_view TexteMediel(int32_t valeur);
// The kosher rating of a CodeCIP. Throws Echec: -90 without VDXPROA record.
int32_t MedielDuProduit(const Contexte& contexte, const std::string& cip);

struct LigneMediel {
    std::string CodeCIP;
    std::string Libelle;
    std::string Texte;
};
// Every product filed under "M" in VDXVPRO, with its rating's text. Throws
// Echec: -90 for a product VDXPROA lacks, -500.
std::vector<LigneMediel> ProduitsMediel(const Contexte& contexte);

VDX_LIGNE(LigneMediel, CodeCIP, Libelle, Texte);

}  // namespace vdx
