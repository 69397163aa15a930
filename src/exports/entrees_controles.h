// The inputs of the safety checks as their exports read them: the host's
// arrays in mode 0, the text input in the others, with the codes of each
// failure. The checks and their HTML reports read them alike.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "checks/contreindications.h"
#include "vdx32/oleauto.h"

namespace vdx {

// The codes of a prescription as given: the list ends at its first empty
// entry, and a code after it gives -12; a 13-digit code is mapped under
// CIP13Actif 1 (-13 without mapping).
std::vector<std::string> CodesPrescription(std::vector<std::string> codes);
// The product codes from the host's array (null or without element: -10).
std::vector<std::string> CodesDuTableau(SAFEARRAY** produits);
// A product code of the text input, cut to the length of a CodeCIP; a list
// of them.
std::string CodeCIPDuTexte(std::string code);
std::vector<std::string> CodesCIPDuTexte(std::vector<std::string> codes);
// The first list of the text input (the product codes); the patient's
// lists behind it are not needed.
std::vector<std::string> CodesDuTexte();
// The codes of the redundancy check: the host's array (null -10) or the
// text input's first list.
std::vector<std::string> CodesSurdosage(SAFEARRAY** produits);

// The lists of the contra-indication checks: CodesPatient, TypesPatient,
// ValeursPatient, the products, and with `avecAnalyses` the analyses (in
// the text input value and kind alternately). Null lists give -10, -20,
// -30, -50, -60 by their place; lists of unequal lengths -10.
struct EntreesProfil {
    ProfilPatient patient;
    std::vector<std::string> produits;
};
EntreesProfil LitEntrees(SAFEARRAY** codes, SAFEARRAY** types, SAFEARRAY** valeurs, SAFEARRAY** produits,
                         SAFEARRAY** analyses, bool avecAnalyses);

// The lists of an allergy check, the terms only `avecTermes`: from the
// host's arrays in mode 0 (null -10, -20, -30 by list, unreadable -21),
// else from the input text, each list ended by an empty line.
struct EntreesAllergies {
    std::vector<std::string> termes;
    std::vector<int32_t> allergenes;
    std::vector<std::string> produits;
};
EntreesAllergies LitAllergies(SAFEARRAY** termes, SAFEARRAY** allergenes, SAFEARRAY** produits, bool avecTermes);

}  // namespace vdx
