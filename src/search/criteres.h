// A criteria search: a list of criteria applied in order to one set of
// products behind a handle: an indication, a class, a form, a concept of
// the thesaurus, a laboratory, the terms a product must not carry, a
// patient's conditions, a product flag, no new interaction with a
// prescription, a route.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "search/ensemble.h"
#include "session/contexte.h"

namespace vdx {

// champ: 1 products of an indication term; 2 class by prefix; 3 form by
// prefix; 4 concept of the thesaurus (Code its number); 5 laboratory; 6
// out by contra-indication then precaution; 7 by precaution then
// contra-indication; 8 by adverse effect; 9 the patient's conditions; 10
// the product flag; 11 no new interaction with the prescription in Code
// ("|" between its codes); 12 route. Operation 0 keeps what matches, 1
// takes it out, as each criterion reads it. qualifiant: for the terms, 1 a
// term code, 2 a CISP code, 3 a CIM10 code.
struct CritereRecherche {
    int32_t champ = 0;
    int32_t Operation = 0;
    std::string Code;
    int32_t qualifiant = 0;
};
inline constexpr int32_t ChampMin = 1, ChampMax = 12;
// A criterion of another champ or without Code is skipped.
bool CritereActif(const CritereRecherche& critere);

// The patient of champ 9 and 11. Sexe "M" or "F", NUL for none.
struct ProfilArguments {
    int32_t Age = 0;
    int32_t Poids = 0;
    char Sexe = '\0';
    int32_t Grossesse = 0;
    int32_t Allaitement = 0;
};

// One criterion on the set: the set's count. Throws Echec: -300 a
// criterion that needs a set meets an empty one, -2 a route of two
// characters, -200, -500.
int32_t AppliqueCritere(const Contexte& contexte, EnsembleCIP& ensemble, const CritereRecherche& critere,
                        const ProfilArguments& patient);

// Recherche_Vdx: the criteria in order on the set of `handle` (a new one
// for 0, written back once the list ran to its end). The result of the
// last criterion that ran, 0 when none did; a negative count of champ 11
// does not stop the list. Throws Echec: -20 a handle not issued; a
// criterion's failure, which stops the list (a new set then dropped, an
// existing one keeping what the criteria before did).
int32_t Recherche(const Contexte& contexte, const std::vector<CritereRecherche>& criteres, int32_t& handle,
                  const ProfilArguments& patient);

}  // namespace vdx
