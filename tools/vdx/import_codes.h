// The codes an import gives to the words of the published files: routes,
// rates, regulatory lists and conditions, laboratories. Each table of
// correspondence is here and nowhere else.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vdx::import {

// A text of this program, written in UTF-8 here, in code page 1252.
std::string Texte(std::string_view utf8);
// A month and its year in words, "août 2016" for 8 and "2016", in code page
// 1252; empty for a month outside 1 to 12.
std::string MoisEnLettres(int mois, std::string_view annee);

// --- Routes ---------------------------------------------------------------
// A route code beginning with "A" reaches the whole body ("A1" digestive,
// "A2" injected, infiltrations and epidurals included, "A3" through skin
// or lungs, "A4" the eye, "A5" a mucosa); "B" is local (the skin, the ear,
// the nose, the teeth and gums); "C" a route the table doesn't know,
// numbered in the order of its name.
std::optional<std::string> CodeVoie(std::string_view routePliee);
// The groups of routes that a filter of a couple names, with their labels.
std::map<std::string, std::string> GroupesVoies();
// The routes a thesaurus protagonist names ("SELS DE FER PAR VOIE
// INJECTABLE" gives "A2"); none for the others.
std::optional<std::string> VoiesNommees(std::string_view protagoniste);
// The route filter of a thesaurus protagonist: the routes it names, else
// "A", every systemic route.
std::string FiltreVoies(std::string_view protagoniste);
// A protagonist that stands for every medicine given by some routes
// ("MEDICAMENTS ADMINISTRES PAR VOIE ORALE"): those routes ("A1"); none for
// the others.
std::optional<std::string> FamilleDeVoie(std::string_view protagoniste);
// The routes the text of a couple gives one of its sides, "Avec
// l'amphotericine B administree par voie IV : ..." giving "L'AMPHOTERICINE
// B" (folded, as written) and "A21"; none for a text that names no route
// it knows.
struct VoiesDuTexte {
    std::string cote;
    std::string voies;
};
std::optional<VoiesDuTexte> VoiesDuTexteCouple(std::string_view texte);
// A name without the routes it restricts itself to, nor the salt words
// before it: "SELS DE FER PAR VOIE INJECTABLE" gives "FER".
std::string NomSansVoie(std::string_view protagoniste);

// --- What is taken beside a prescription ------------------------------------
// A protagonist of the thesaurus that is no medicine (a drink, a food, a
// plant, a device): the label a prescriber reads (code page 1252) and the
// routes of the medicines it meets ("A" what is swallowed meets them in the
// whole body, "B" a device meets what is laid on the skin or a mucosa).
struct Exterieur {
    std::string libelle;
    std::string voies;
    // Also a substance of medicines (St John's wort): prescribed, it
    // interacts as any of them.
    bool medicament = false;
};
// By folded name.
const std::map<std::string, Exterieur>& SubstancesExterieures();

// --- Money ----------------------------------------------------------------
// The code of VDXTSS of a reimbursement rate ("65%" gives "2"), with the
// rate; of several rates the highest.
struct Taux {
    std::string code;
    double taux = 0;
};
std::optional<Taux> TauxRemboursement(const std::vector<std::string>& taux);
std::vector<Taux> TousLesTaux();
// VAT: the reduced rate of reimbursed medicines, the intermediate one of
// the others.
Taux TvaDe(bool rembourse);
std::vector<Taux> ToutesLesTva();

// --- Regulatory conditions -------------------------------------------------
// What the prescription and dispensing conditions of a speciality make of
// it: its list (CodeTableau "A" list I, "C" list II, "B" narcotics), the
// hospital flag, and the codes of VDXPRESR it names.
struct Reglementation {
    std::string codeTableau;
    bool hospitalier = false;
    std::set<int> prescriptions;
};
Reglementation Reglemente(const std::vector<std::string>& conditions);
struct PrescriptionRestreinte {
    int code;
    std::string libelle;  // code page 1252
    std::string detail;
};
std::vector<PrescriptionRestreinte> PrescriptionsRestreintes();
// The labels of the lists of CodeTableau (VDXTAB).
std::map<std::string, std::string> Listes();

// --- Laboratories -----------------------------------------------------------
// Four characters a holder, from its name, made unique in the order of the
// names.
std::map<std::string, std::string> CodesLaboratoires(const std::set<std::string>& noms);

// --- Allergy concepts -------------------------------------------------------
// The thesaurus classes that are chemical families, folded as the
// thesaurus is read: concepts of the allergy check, numbered from just
// above the last substance number in this order.
const std::vector<std::string>& FamillesChimiques();

// --- Redundancy and heat wave -------------------------------------------------
// The thesaurus classes known for risky duplication, in the order they are
// numbered as classes "T001", "T002"...
const std::vector<std::string>& ClassesARisque();
// A heat-wave category: its letter, its label (code page 1252) and the
// thesaurus classes whose members fall in it.
struct CategorieCanicule {
    std::string lettre;
    std::string libelle;
    std::vector<std::string> classes;
};
const std::vector<CategorieCanicule>& CategoriesCanicule();

// --- Units of a dosage ---------------------------------------------------------
// A dosage's unit ("mg", "microgrammes") as a unit of take, by its fold;
// none for the others ("CH", "%").
struct UniteDosage {
    std::string singulier;
    std::string pluriel;
};
std::optional<UniteDosage> UniteDeDosage(std::string_view pliee);

// --- Posology vocabularies ---------------------------------------------------
// The words a posology is coded with, whose codes the library relies on:
// labels in code page 1252.
struct MotPosologie {
    int code;
    std::string libelle;
};
// Periods and durations, by length: 10 minute, 20 hour, 30 half-day, 40 day,
// 50 week, 60 month, 70 year.
std::vector<MotPosologie> PeriodesPosologie();
// How many of the first period fit in the second, for every pair of them.
struct FacteurPeriodes {
    int de;
    int vers;
    double facteur;
};
std::vector<FacteurPeriodes> FacteursPeriodes();
// Moments of the take, with what they multiply the daily quantity by (0
// for none).
struct MomentPosologie {
    int code;
    std::string libelle;
    double multiplicateur;
};
std::vector<MomentPosologie> MomentsPosologie();
std::vector<MotPosologie> SpecificationsPosologie();
std::vector<MotPosologie> NaturesPosologie();
// Patient profiles a posology can be for: type 1 a range "low-high" of a
// measure, type 2 a text.
struct ProfilPosologie {
    int code;
    std::string libelle;
    int type;
    std::string valeur;
};
std::vector<ProfilPosologie> ProfilsPosologie();

}  // namespace vdx::import
