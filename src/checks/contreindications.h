// Contra-indications and precautions of products against one patient: the
// patient's pathology codes matched with the terms linked to the products,
// and the conditions of age, weight, sex, pregnancy, breast-feeding and
// biology that the terms carry. One engine; the exports differ by a rule.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "session/entrees.h"
#include "session/lignes.h"
#include "store/catalogue.h"

namespace vdx {

// The kinds of a patient's pathology code.
enum TypePathologie : int32_t { PathologieTerme = 1, PathologieCISP = 2, PathologieCIM10 = 3 };

// The patient as the checks see it. Units are those of the terms' data:
// months, kilograms, weeks of pregnancy.
struct ProfilPatient {
    std::vector<std::string> CodesPatient;
    std::vector<int32_t> TypesPatient;    // TypePathologie, same length
    std::vector<int32_t> ValeursPatient;  // the host's, carried into the alerts
    int32_t Age = 0;
    int32_t Poids = 0;      // 0: unknown
    int32_t Grossesse = 0;  // 0: not pregnant; -1: pregnant, term unknown
    int32_t Allaitement = 0;
    char Sexe = ' ';        // 'M', 'F' or a blank
    std::vector<Analyse> Analyses;
};

// The first character of a host's text when it is "M" or "F", else a blank.
char SexeNormalise(const char* sexe);

// An alert: the product, the term and what of the patient caused it.
struct AlerteCI {
    int32_t NiveauAlerte = 0;
    int32_t ValeurPatient = 0;  // -1 for a condition of the profile
    std::string CodeProduit;
    std::string LibelleProduit;
    std::string CodeTerme;
    std::string LibelleTerme;
    std::string CodePatient;  // empty for a condition of the profile
};

// The levels of an alert by cause. A link digit of a pathology's match is
// its own level. The conditions of the profile have a level per kind of
// term: 0 a contra-indication, 30 a precaution, and in the report's rule 10
// and 20 for the link digits 1 and 2; pregnancy and breast-feeding are 9
// above those (9, 39, 19, 29).
inline constexpr int32_t NiveauContreIndication = 0;
inline constexpr int32_t NiveauPrecaution = 30;
inline constexpr int32_t NiveauRapportLien = 10;  // times the link digit
inline constexpr int32_t EcartGrossesse = 9;
// The link digit of a precaution.
inline constexpr int32_t ChiffrePrecaution = 3;

// The level an alert is filtered at by NiveauCI_Vdx: dropped when below the
// context's NiveauCI.
int32_t NiveauFiltre(int32_t niveau);

// How the checks differ, as parameters of the one engine.
struct RegleProfil {
    bool inconnuNeutre;       // an Age or Poids of 0 and a blank Sexe clear nothing
    bool poidsMaxInclus;      // a Poids equal to PoidsMax applies
    bool grossesseMaxInclus;  // a Grossesse equal to GrossesseMax applies
    bool biologie;            // the patient's analyses are compared
    bool niveauxDuLien;       // the report's levels by link digit
    bool convertitCIP13;      // a 13-digit product code is mapped (and then skipped)
};
inline constexpr RegleProfil RegleProfil2{false, false, false, false, false, true};
inline constexpr RegleProfil RegleProfil3{true, true, true, true, false, true};
inline constexpr RegleProfil RegleRapport{true, false, true, true, true, false};

// The alerts of `produits` for the patient, sorted by product label. Only
// seven-character codes are looked at. Throws Echec (-13 for a 13-digit
// code without mapping under the rules that map them, -500).
std::vector<AlerteCI> ContreIndicationsPatient(const Contexte& contexte, ProfilPatient patient,
                                               const std::vector<std::string>& produits, const RegleProfil& regle);

// The overlap test of a patient's range "a-b" with a term's "c-d": a is
// taken 5% lower and b 5% higher. False for a text without two numbers.
bool Chevauche(std::string_view patient, std::string_view terme);

// A row of ContreIndicationsProfil_Vdx: a product against a term.
struct FicheCI {
    int32_t NiveauAlerte = 0;
    std::string LibelleProduit;
    std::string LibelleTerme;
};
struct ContreIndicationsCourtes {
    std::vector<FicheCI> fiches;  // one per product label and term
    int32_t alertes = 0;          // the alerts they come from
};
// The products against the term that stands for the last of `termes`, at
// an age: rows by product label from the last, then by level.
ContreIndicationsCourtes ContreIndicationsDesTermes(const Contexte& contexte, const std::vector<std::string>& produits,
                                                    const std::vector<std::string>& termes, int32_t age);

// The vocabulary of terms, VDXVAMM, and the record of a term, which the
// caller holds open: the first key at or above its ten characters, when it
// begins with them. Throws Echec(-500).
const Table& TableTermes();
std::optional<std::string> FicheTerme(std::string_view code);

// The term that stands for a pathology code: the code itself when it is a
// contra-indication or precaution term; else the first term VDXVAMME lists
// as its equivalent; else the first term linked with it as a CIM10 code.
// nullopt for none. Throws Echec(-500).
std::optional<std::string> TermeEquivalent(std::string_view code);
VDX_LIGNE(AlerteCI, NiveauAlerte, ValeurPatient, CodeProduit, LibelleProduit, CodeTerme, LibelleTerme, CodePatient);
VDX_LIGNE(FicheCI, NiveauAlerte, LibelleProduit, LibelleTerme);

}  // namespace vdx
