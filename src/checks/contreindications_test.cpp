// Contra-indications against a patient: pathology codes of each kind, the
// conditions of the profile under each rule, levels and their filter, the
// biological test, the inputs of the exports by mode and their codes.
#include "checks/contreindications.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/hote.h"
#include "tests/support/essai_produits.h"
#include "session/cadre.h"
#include "session/resultat.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// Terms of the vocabulary.
constexpr char Hepatique[] = "CI00000001";  // 3000001 (level 0), 3000003 (1), 9000001; CIM10 K72
constexpr char Poids50[] = "CI00000002";    // 3000001: 1 to 50 kg; CIM10 E44
constexpr char Renale[] = "CI00000003";     // precaution of 3000001; CIM10 N18; clearance 0-30
constexpr char Grossesse24[] = "CI00000004";  // 3000002 (level 2): weeks 24 to 39; CIM10 Z33
constexpr char Enfant[] = "CI00000005";     // 3000002 (level 1): under 180 months
constexpr char Allaitement[] = "CI00000006";  // 3000002
constexpr char Ulcere[] = "CI00000007";     // 3000002 (level 1); CIM10 K25, K26
constexpr char Homme[] = "CI00000008";      // 3000003: men
constexpr char SujetAge[] = "CI00000009";   // precaution of 3000002: 780 months and more
constexpr char GrossesseDebut[] = "CI00000010";  // precaution of 3000001: weeks 1 to 24
constexpr char HepatiteB[] = "CI00000011";  // precaution of 3000003: analysis text
constexpr char Plaquettes[] = "CI00000012";  // precaution of 3000003: range and text
constexpr char SansFiche[] = "CI99999999";  // 3000002; CIM10 X99; not in the vocabulary
constexpr char PathologieUlcere[] = "PA00000001";  // a patient's term standing for K25
constexpr char EnfantBis[] = "CI00000013";  // 3000011, with Enfant: the same label and condition

// A term and its conditions; 0 or empty: none.
struct Terme {
    const char* code;
    const char* type;
    const char* libelle;
    const char* majuscules;
    int32_t AgeMin = 0, AgeMax = 0, PoidsMin = 0, PoidsMax = 0, GrossesseMin = 0, GrossesseMax = 0;
    const char* SexeTerme = "";
    int32_t AllaitementTerme = 0, TypeAnalyse = 0;
    const char* TexteAnalyse = "";
};

void Remplit(BaseDeTest& b) {
    for (auto [cip, libelle] : {std::pair{"3000001", "DOLIPRANE 1000MG CPR"}, {"3000011", "DOLIPRANE 1000MG GELULE"},
                                {"3000002", "ASPIRINE 500MG CPR"}, {"3000003", "CONTRACEPTIF CPR"}})
        b.Ajoute("VDXPRO", {{"CodeCIP", cip}, {"Libelle", libelle}});
    b.Ajoute("VDXYDCI", {{"Code", "9000001"}, {"Libelle", "Paracétamol 1 g cp"}, {"LibelleCle", "PARACETAMOL"}});
    b.Ajoute("VDXCIP13", {{"CodeCIP", "3000001"}, {"CIP13", "3400930000011"}});

    const Terme termes[] = {
        {.code = Hepatique, .type = "2", .libelle = "Insuffisance hépatique", .majuscules = "INSUFFISANCE HEPATIQUE"},
        {.code = Poids50, .type = "2", .libelle = "Poids inférieur à 50 kg", .majuscules = "POIDS INFERIEUR A 50 KG", .PoidsMin = 1, .PoidsMax = 50},
        {.code = Renale, .type = "3", .libelle = "Insuffisance rénale", .majuscules = "INSUFFISANCE RENALE", .TypeAnalyse = 1, .TexteAnalyse = "0-30"},
        {.code = Grossesse24, .type = "2", .libelle = "Grossesse à partir de 24 SA", .majuscules = "GROSSESSE A PARTIR DE 24 SA", .GrossesseMin = 24,
         .GrossesseMax = 39},
        {.code = Enfant, .type = "2", .libelle = "Enfant de moins de 15 ans", .majuscules = "ENFANT DE MOINS DE 15 ANS", .AgeMax = 180},
        {.code = Allaitement, .type = "2", .libelle = "Allaitement", .majuscules = "ALLAITEMENT", .AllaitementTerme = 1},
        {.code = Ulcere, .type = "2", .libelle = "Ulcère évolutif", .majuscules = "ULCERE EVOLUTIF"},
        {.code = Homme, .type = "2", .libelle = "Homme", .majuscules = "HOMME", .SexeTerme = "M"},
        {.code = SujetAge, .type = "3", .libelle = "Sujet âgé", .majuscules = "SUJET AGE", .AgeMin = 780, .AgeMax = 1800},
        {.code = GrossesseDebut, .type = "3", .libelle = "Début de grossesse", .majuscules = "DEBUT DE GROSSESSE", .GrossesseMin = 1, .GrossesseMax = 24},
        {.code = HepatiteB, .type = "3", .libelle = "Hépatite B", .majuscules = "HEPATITE B", .TypeAnalyse = 2, .TexteAnalyse = "AG HBS POSITIF"},
        {.code = Plaquettes, .type = "3", .libelle = "Thrombopénie", .majuscules = "THROMBOPENIE", .TypeAnalyse = 3, .TexteAnalyse = "10-20/PLAQUETTES 10-20"},
        {.code = EnfantBis, .type = "2", .libelle = "Enfant de moins de 15 ans",
         .majuscules = "ENFANT DE MOINS DE 15 ANS", .AgeMax = 180},
        {.code = PathologieUlcere, .type = "1", .libelle = "Ulcère de l'estomac", .majuscules = "ULCERE DE L'ESTOMAC"},
    };
    for (const Terme& t : termes)
        b.Ajoute("VDXVAMM", {{"CodeTerme", t.code},           {"TypeAMM", t.type},
                             {"Libelle", t.libelle},          {"LibelleMajuscules", t.majuscules},
                             {"AgeMin", t.AgeMin},            {"AgeMax", t.AgeMax},
                             {"PoidsMin", t.PoidsMin},        {"PoidsMax", t.PoidsMax},
                             {"GrossesseMin", t.GrossesseMin}, {"GrossesseMax", t.GrossesseMax},
                             {"SexeTerme", t.SexeTerme},      {"AllaitementTerme", t.AllaitementTerme},
                             {"TypeAnalyse", t.TypeAnalyse},  {"TexteAnalyse", t.TexteAnalyse}});
    const auto lien = [&b](const char* cip, const char* type, const char* terme, int32_t niveau) {
        b.Ajoute("VDXVAMPC", {{"CodeCIP", cip}, {"TypeAMM", type}, {"CodeTerme", terme}, {"NiveauLien", niveau}});
    };
    lien("3000001", "2", Hepatique, 0);
    lien("3000001", "2", Poids50, 0);
    lien("3000001", "3", Renale, 0);
    lien("3000001", "3", GrossesseDebut, 0);
    lien("3000011", "2", Hepatique, 0);
    lien("3000011", "2", Enfant, 0);
    lien("3000011", "2", EnfantBis, 0);
    lien("3000002", "2", Grossesse24, 2);
    lien("3000002", "2", Enfant, 1);
    lien("3000002", "2", Allaitement, 0);
    lien("3000002", "2", Ulcere, 1);
    lien("3000002", "2", SansFiche, 0);
    lien("3000002", "3", SujetAge, 0);
    lien("3000003", "2", Hepatique, 1);
    lien("3000003", "2", Homme, 0);
    lien("3000003", "3", HepatiteB, 0);
    lien("3000003", "3", Plaquettes, 0);
    lien("9000001", "2", Hepatique, 0);
    for (auto [terme, type, code] : {std::tuple{Hepatique, "02", "K72"}, {Poids50, "02", "E44"}, {Renale, "02", "N18"},
                                     {Ulcere, "02", "K25"}, {Ulcere, "02", "K26"}, {Grossesse24, "02", "Z33"},
                                     {SansFiche, "02", "X99"}, {PathologieUlcere, "01", "K25"}})
        b.Ajoute("VDXVAMMC", {{"CodeTerme", terme}, {"TypeLien", type}, {"CodeLie", code}});
    b.Ajoute("VDXVAMME", {{"CodeTerme", "IN00000001"}, {"CodeEquivalent", Ulcere}});
    for (auto [code, libelle] : {std::pair{"K72", "Insuffisance hépatique"}, {"K72.9", "Insuffisance hépatique, sans précision"},
                                 {"K25", "Ulcère de l'estomac"}, {"N18", "Insuffisance rénale chronique"},
                                 {"Z33", "Grossesse constatée"}, {"E44", "Malnutrition"}})
        b.Ajoute("VDXVCIM", {{"Code", code}, {"Libelle", libelle}, {"LibelleCle", libelle}});
    b.Ajoute("VDXVCISP", {{"Code", "W78"}, {"Libelle", "Grossesse"}, {"LibelleCle", "GROSSESSE"}})
        .Ajoute("VDXVCISP", {{"Code", "D86"}, {"Libelle", "Ulcère peptique"}, {"LibelleCle", "ULCERE PEPTIQUE"}});
    for (auto [cisp, cim] : {std::pair{"W78", "Z33"}, {"D86", "K25"}, {"D86", "K26"}})
        b.Ajoute("VDXVCICI", {{"CodeCISP", cisp}, {"CodeCIM10", cim}});
}

class ContreIndications : public essai::SurUneBase<ContreIndications> {
public:
    static void Remplit(BaseDeTest& b) { vdx::Remplit(b); }

protected:
    // The patient of a test; pathologies given as (code, type), each with
    // its rank + 1 as value.
    static ProfilPatient Patient(std::initializer_list<std::pair<const char*, int32_t>> pathologies = {},
                                 char sexe = ' ') {
        ProfilPatient p;
        for (auto [code, type] : pathologies) {
            p.CodesPatient.push_back(code);
            p.TypesPatient.push_back(type);
            p.ValeursPatient.push_back(static_cast<int32_t>(p.ValeursPatient.size()) + 1);
        }
        p.Sexe = sexe;
        p.Age = 400;  // an adult, unless a test says otherwise
        return p;
    }
    // The alerts as "product/term/level" in their order.
    static std::string Resume(const std::vector<AlerteCI>& alertes) {
        std::string texte;
        for (const AlerteCI& a : alertes)
            texte += (texte.empty() ? "" : " ") + a.CodeProduit + "/" + a.CodeTerme + "/" + std::to_string(a.NiveauAlerte);
        return texte;
    }
    static std::string Verifie(const ProfilPatient& p, std::vector<std::string> produits,
                               const RegleProfil& regle = RegleProfil2) {
        return Resume(ContreIndicationsPatient(session(), p, produits, regle));
    }
};

TEST_F(ContreIndications, PathologyCodesOfEachKindMatchTheTermsOfTheProducts) {
    // A term, directly and through the codes it stands for.
    auto alertes = ContreIndicationsPatient(session(), Patient({{Ulcere, PathologieTerme}}), {"3000002"}, RegleProfil2);
    ASSERT_EQ(alertes.size(), 1u);
    EXPECT_EQ(alertes[0].CodePatient, Ulcere);
    EXPECT_EQ(alertes[0].ValeurPatient, 1);
    EXPECT_EQ(alertes[0].LibelleProduit, "ASPIRINE 500MG CPR");
    EXPECT_EQ(alertes[0].LibelleTerme, "Ulc\xE8re \xE9volutif");
    alertes = ContreIndicationsPatient(session(), Patient({{PathologieUlcere, PathologieTerme}}), {"3000002"}, RegleProfil2);
    ASSERT_EQ(alertes.size(), 1u);
    EXPECT_EQ(alertes[0].CodePatient, "K25");

    // CISP through its CIM10 codes; one hit per product and code.
    EXPECT_EQ(Verifie(Patient({{"D86", PathologieCISP}}), {"3000002"}), "3000002/CI00000007/1");

    // CIM10: three characters become the ".9" code when it exists; a double
    // code is searched as its halves; a code begins the longer one.
    alertes = ContreIndicationsPatient(session(), Patient({{"K72", PathologieCIM10}}), {"3000001"}, RegleProfil2);
    ASSERT_EQ(alertes.size(), 1u);
    EXPECT_EQ(alertes[0].CodePatient, "K72.9");
    EXPECT_EQ(Verifie(Patient({{"E44K25", PathologieCIM10}}), {"3000001", "3000002"}),
              "3000002/CI00000007/1 3000001/CI00000002/0");
    EXPECT_EQ(Verifie(Patient({{"K2", PathologieCIM10}}), {"3000002"}), "3000002/CI00000007/1");

    // A term the vocabulary lacks, a common-name line, an unknown product,
    // an empty code, a kind of code that does not exist.
    alertes = ContreIndicationsPatient(session(), Patient({{"X99", PathologieCIM10}}), {"3000002"}, RegleProfil2);
    ASSERT_EQ(alertes.size(), 1u);
    EXPECT_EQ(alertes[0].LibelleTerme, "Code CI99999999 inexistant.");
    alertes = ContreIndicationsPatient(session(), Patient({{"K72.9", PathologieCIM10}}), {"9000001", "3999999"}, RegleProfil2);
    ASSERT_EQ(alertes.size(), 1u);
    EXPECT_EQ(alertes[0].LibelleProduit, "Parac\xE9tamol 1 g cp");
    EXPECT_EQ(Verifie(Patient({{"", PathologieCIM10}, {"K72", 7}}), {"3000001", "3000002"}), "");
}

TEST_F(ContreIndications, ConditionsOfTheProfileAndTheirBoundsUnderEachRule) {
    ProfilPatient p = Patient();
    const auto cas = [&](const RegleProfil& regle, const char* produit) { return Verifie(p, {produit}, regle); };

    // Age: the maximum is excluded under both rules.
    p.Age = 180;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "");
    EXPECT_EQ(cas(RegleProfil3, "3000002"), "");
    p.Age = 179;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "3000002/CI00000005/0");
    p.Age = 800;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "3000002/CI00000009/30");

    // Weight: the maximum, and an unknown weight.
    p = Patient();
    p.Poids = 50;
    EXPECT_EQ(cas(RegleProfil2, "3000001"), "");
    EXPECT_EQ(cas(RegleProfil3, "3000001"), "3000001/CI00000002/0");
    EXPECT_EQ(cas(RegleRapport, "3000001"), "");
    p.Poids = 0;
    EXPECT_EQ(cas(RegleProfil2, "3000001"), "");
    EXPECT_EQ(cas(RegleProfil3, "3000001"), "3000001/CI00000002/0");
    p.Poids = 49;
    EXPECT_EQ(cas(RegleProfil2, "3000001"), "3000001/CI00000002/0");

    // Pregnancy: the maximum, the minimum, an unknown term.
    p = Patient({}, 'F');
    p.Grossesse = 39;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "");
    EXPECT_EQ(cas(RegleProfil3, "3000002"), "3000002/CI00000004/9");
    p.Grossesse = 24;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "3000002/CI00000004/9");
    EXPECT_EQ(cas(RegleProfil2, "3000001"), "");
    p.Grossesse = 23;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "");
    EXPECT_EQ(cas(RegleProfil2, "3000001"), "3000001/CI00000010/39");
    p.Grossesse = -1;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "3000002/CI00000004/9");
    p.Sexe = 'M';
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "");

    // Sex, and a blank one.
    p = Patient({}, 'M');
    EXPECT_EQ(cas(RegleProfil2, "3000003"), "3000003/CI00000008/0");
    p.Sexe = 'F';
    EXPECT_EQ(cas(RegleProfil2, "3000003"), "");
    p.Sexe = ' ';
    EXPECT_EQ(cas(RegleProfil2, "3000003"), "");
    EXPECT_EQ(cas(RegleProfil3, "3000003"), "3000003/CI00000008/0");

    // Breast-feeding is defined only when the patient breast-feeds.
    p = Patient({}, 'F');
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "");
    p.Allaitement = 1;
    EXPECT_EQ(cas(RegleProfil2, "3000002"), "3000002/CI00000006/9");

    EXPECT_EQ(SexeNormalise("Femme"), 'F');
    EXPECT_EQ(SexeNormalise("m"), ' ');
    EXPECT_EQ(SexeNormalise(nullptr), ' ');
}

TEST_F(ContreIndications, APathologyLabelledPregnancyMakesAWomanPregnant) {
    // Z33 is the pregnancy term's code (level 2 by the code); its label also
    // tells a pregnancy, so the precaution of early pregnancy applies.
    EXPECT_EQ(Verifie(Patient({{"Z33", PathologieCIM10}}, 'F'), {"3000001", "3000002"}),
              "3000002/CI00000004/2 3000001/CI00000010/39");
    EXPECT_EQ(Verifie(Patient({{"Z33", PathologieCIM10}}, 'M'), {"3000001", "3000002"}), "3000002/CI00000004/2");
    EXPECT_EQ(Verifie(Patient({{"W78", PathologieCISP}}, 'F'), {"3000001"}), "3000001/CI00000010/39");
    ProfilPatient p = Patient({{"W78", PathologieCISP}}, 'F');
    p.Grossesse = 30;  // a known term stays
    EXPECT_EQ(Verifie(p, {"3000001"}), "");
}

TEST_F(ContreIndications, LevelsAreFilteredByTheSessionsLevel) {
    EXPECT_EQ(NiveauFiltre(0), 2);
    EXPECT_EQ(NiveauFiltre(1), 1);
    EXPECT_EQ(NiveauFiltre(3), 0);
    EXPECT_EQ(NiveauFiltre(9), 2);
    EXPECT_EQ(NiveauFiltre(10), 1);
    EXPECT_EQ(NiveauFiltre(19), 19);
    EXPECT_EQ(NiveauFiltre(29), 29);
    EXPECT_EQ(NiveauFiltre(39), 0);

    ProfilPatient p = Patient({{"K25", PathologieCIM10}, {"Z33", PathologieCIM10}, {"N18", PathologieCIM10}}, 'F');
    p.Age = 800;
    p.Poids = 40;
    p.Allaitement = 1;
    const std::vector<std::string> produits = {"3000001", "3000002"};
    const std::string tout = Verifie(p, produits);
    EXPECT_EQ(tout,
              "3000002/CI00000007/1 3000002/CI00000004/2 3000002/CI00000006/9 3000002/CI00000009/30 "
              "3000001/CI00000010/39 3000001/CI00000003/3 3000001/CI00000002/0");
    EXPECT_EQ(NiveauCI_Vdx(2), 2);
    EXPECT_EQ(Verifie(p, produits), "3000002/CI00000004/2 3000002/CI00000006/9 3000001/CI00000002/0");
    EXPECT_EQ(NiveauCI_Vdx(-1), 2);
    EXPECT_EQ(NiveauCI_Vdx(0), 0);
    EXPECT_EQ(Verifie(p, produits), tout);
}

TEST_F(ContreIndications, OneAlertPerProductAndTermTheFirstFoundStands) {
    // E44 finds the weight term by its code before the weight does.
    ProfilPatient p = Patient({{"E44", PathologieCIM10}});
    p.Poids = 40;
    const auto alertes = ContreIndicationsPatient(session(), p, {"3000001", "3000001"}, RegleProfil2);
    ASSERT_EQ(alertes.size(), 1u);
    EXPECT_EQ(alertes[0].ValeurPatient, 1);
    EXPECT_EQ(alertes[0].CodePatient, "E44");
    // The profile's alerts say so.
    p = Patient();
    p.Poids = 40;
    const auto profil = ContreIndicationsPatient(session(), p, {"3000001"}, RegleProfil2);
    ASSERT_EQ(profil.size(), 1u);
    EXPECT_EQ(profil[0].ValeurPatient, -1);
    EXPECT_EQ(profil[0].CodePatient, "");
    // Sorted by product label whatever the order of the products.
    EXPECT_EQ(Verifie(Patient({{"K72", PathologieCIM10}}), {"3000001", "3000003", "3000002"}),
              "3000003/CI00000001/1 3000001/CI00000001/0");
}

TEST_F(ContreIndications, BiologicalResultsOverlapTheTermsRanges) {
    EXPECT_TRUE(Chevauche("25-28", "0-30"));
    EXPECT_TRUE(Chevauche("31-40", "0-30"));   // 31 taken 5% lower
    EXPECT_FALSE(Chevauche("32-40", "0-30"));
    EXPECT_TRUE(Chevauche("5-9,6", "10-20"));  // 9,6 taken 5% higher
    EXPECT_FALSE(Chevauche("5-9", "10-20"));
    EXPECT_FALSE(Chevauche("25", "0-30"));
    EXPECT_FALSE(Chevauche("a-b", "0-30"));

    ProfilPatient p = Patient({}, 'F');
    p.Poids = 70;
    const auto avec = [&](std::initializer_list<Analyse> analyses, const char* produit) {
        p.Analyses = analyses;
        return Verifie(p, {produit}, RegleProfil3);
    };
    EXPECT_EQ(avec({{"25-28", 1}}, "3000001"), "3000001/CI00000003/30");
    EXPECT_EQ(avec({{"40-50", 1}}, "3000001"), "");
    EXPECT_EQ(avec({{"25-28", 1}, {"40-50", 1}}, "3000001"), "");  // the last one stands
    EXPECT_EQ(avec({{"40-50", 1}, {"25-28", 1}, {"", 1}}, "3000001"), "3000001/CI00000003/30");
    EXPECT_EQ(avec({{"25-28", 2}}, "3000001"), "");
    EXPECT_EQ(avec({{"HBS", 2}}, "3000003"), "3000003/CI00000011/30");
    EXPECT_EQ(avec({{"10-20", 1}}, "3000003"), "3000003/CI00000012/30");
    EXPECT_EQ(avec({{"10-15", 1}}, "3000003"), "");  // in the range, not in the text
    EXPECT_EQ(Verifie(p, {"3000003"}, RegleProfil2), "");  // no biology there
}

TEST_F(ContreIndications, TheReportsRuleKeepsTheLinkDigitInTheLevel) {
    ProfilPatient p = Patient({}, 'F');
    p.Age = 100;
    p.Grossesse = 30;
    EXPECT_EQ(Verifie(p, {"3000002"}, RegleRapport), "3000002/CI00000004/29 3000002/CI00000005/10");
    EXPECT_EQ(Verifie(p, {"3000002"}, RegleProfil3), "3000002/CI00000004/9 3000002/CI00000005/0");
    // A 13-digit code is neither mapped nor refused there.
    EXPECT_EQ(Verifie(p, {"3400930999999"}, RegleRapport), "");
    EXPECT_THROW(Verifie(p, {"3400930999999"}, RegleProfil2), Echec);
    EXPECT_EQ(Verifie(p, {"3400930000011"}, RegleProfil2), "");
}

// The exports, their inputs by mode and their codes.
class ContreIndicationsExports : public ContreIndications {
protected:
    struct Tableaux {
        SAFEARRAY* codes = nullptr;
        SAFEARRAY* types = nullptr;
        SAFEARRAY* valeurs = nullptr;
        SAFEARRAY* produits = nullptr;
        SAFEARRAY* analyses = nullptr;
        SAFEARRAY* alertes = essai::TableauDeFiches(7);
        ~Tableaux() {
            VideTableau(alertes, GabaritAlerte);
            VideTableau(analyses, {TypeChamp::Texte, TypeChamp::Entier});
            for (SAFEARRAY* t : {codes, types, valeurs, produits, analyses, alertes}) SafeArrayDestroy(t);
        }
        std::string Alerte(uint32_t i) {
            void* e = hote::Fiche(alertes->pvData, alertes->cbElements, i);
            std::string texte = std::to_string(hote::Entier(e, 0)) + "|" + std::to_string(hote::Entier(e, 1));
            for (uint32_t c = 2; c < 7; ++c) texte += "|" + essai::Texte(*hote::Chaine(e, c));
            return texte;
        }
        const Gabarit GabaritAlerte = {TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Texte,
                                 TypeChamp::Texte,  TypeChamp::Texte,  TypeChamp::Texte};
    };
};

TEST_F(ContreIndicationsExports, ArraysInAndOutAndTheCodeOfEachMissingArray) {
    ReconnecteEnTableau();
    Tableaux t;
    t.codes = essai::TableauDeChaines({"K72", Ulcere});
    t.types = essai::TableauDEntiers({PathologieCIM10, PathologieTerme});
    t.valeurs = essai::TableauDEntiers({11, 22});
    t.produits = essai::TableauDeChaines({"3000002", "3000001"});
    t.analyses = essai::TableauDeFiches(2);
    ASSERT_EQ(
        ContreIndicationsProfil2_Vdx(&t.codes, &t.types, &t.valeurs, &t.produits, &t.alertes, 400, 0, 0, 0, "F"), 2);
    EXPECT_EQ(t.Alerte(0), "1|22|3000002|ASPIRINE 500MG CPR|CI00000007|Ulc\xE8re \xE9volutif|CI00000007");
    EXPECT_EQ(t.Alerte(1), "0|11|3000001|DOLIPRANE 1000MG CPR|CI00000001|Insuffisance h\xE9patique|K72.9");
    EXPECT_EQ(ContreIndicationsProfil3_Vdx(&t.codes, &t.types, &t.valeurs, &t.produits, &t.analyses, &t.alertes,
                                           100, 0, 0, 0, "F"),
              4);  // and, for a child of unknown weight, the age and weight terms

    SAFEARRAY* nul = nullptr;
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(nullptr, &t.types, &t.valeurs, &t.produits, &t.alertes, 0, 0, 0, 0, ""), -10);
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&nul, &t.types, &t.valeurs, &t.produits, &t.alertes, 0, 0, 0, 0, ""), -10);
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.codes, &nul, &t.valeurs, &t.produits, &t.alertes, 0, 0, 0, 0, ""), -20);
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.codes, &t.types, &nul, &t.produits, &t.alertes, 0, 0, 0, 0, ""), -30);
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.codes, &t.types, &t.valeurs, &nul, &t.alertes, 0, 0, 0, 0, ""), -50);
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.codes, &t.types, &t.valeurs, &t.produits, &nul, 0, 0, 0, 0, ""), -60);
    EXPECT_EQ(ContreIndicationsProfil3_Vdx(&t.codes, &t.types, &t.valeurs, &t.produits, &nul, &t.alertes, 0, 0, 0, 0,
                                           ""),
              -60);
    EXPECT_EQ(ContreIndicationsProfil3_Vdx(&t.codes, &t.types, &t.valeurs, &t.produits, &t.analyses, &nul, 0, 0, 0,
                                           0, ""),
              -70);
    // Strings where integers were expected are not read.
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.types, &t.types, &t.valeurs, &t.produits, &t.alertes, 0, 0, 0, 0, ""),
              -21);

    // Lengths that differ; a 13-digit code without mapping.
    SAFEARRAY* court = essai::TableauDEntiers({1});
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.codes, &t.types, &court, &t.produits, &t.alertes, 0, 0, 0, 0, ""), -10);
    SafeArrayDestroy(court);
    SAFEARRAY* treize = essai::TableauDeChaines({"3400930999999"});
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.codes, &t.types, &t.valeurs, &treize, &t.alertes, 0, 0, 0, 0, ""), -13);
    SafeArrayDestroy(treize);

    DeConnection2_Vdx();
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(&t.codes, &t.types, &t.valeurs, &t.produits, &t.alertes, 0, 0, 0, 0, ""), -2);
}

TEST_F(ContreIndicationsExports, FlatModesReadListsEndedByEmptyLines) {
    SetString_Vdx("K72\r\nCI00000007\r\n\r\n3\r\n1\r\n\r\n11@22\r\n\r\n3000002\r\n3000001\r\n\r\n");
    ASSERT_EQ(ContreIndicationsProfil2_Vdx(nullptr, nullptr, nullptr, nullptr, nullptr, 400, 0, 0, 0, "F"), 2);
    EXPECT_EQ(Memoire(),
              "1@22@3000002@ASPIRINE 500MG CPR@CI00000007@Ulc\xE8re \xE9volutif@CI00000007\r\n"
              "0@11@3000001@DOLIPRANE 1000MG CPR@CI00000001@Insuffisance h\xE9patique@K72.9");
    // Codes cut to seven characters; analyses as value and kind.
    SetString_Vdx("\r\n\r\n\r\n300000199\r\n\r\n25-28@1\r\n\r\n");
    ASSERT_EQ(ContreIndicationsProfil3_Vdx(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 60, 0, 0, ""), 1);
    EXPECT_EQ(Memoire(), "30@-1@3000001@DOLIPRANE 1000MG CPR@CI00000003@Insuffisance r\xE9nale@");
    SetString2_Vdx(nullptr);
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, ""), -12);
    SetString_Vdx("K72\r\n\r\n3\r\n\r\n\r\n3000001\r\n\r\n");
    EXPECT_EQ(ContreIndicationsProfil2_Vdx(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, ""), -10);
}

TEST_F(ContreIndicationsExports, TheShortFormChecksTheTermStandingForTheLastCode) {
    // The first code is lost; the last stands for the ulcer by equivalence.
    SetString_Vdx("3000001@3000002\r\nCI00000001@IN00000001");
    ASSERT_EQ(ContreIndicationsProfil_Vdx(nullptr, nullptr, nullptr, 100), 2);
    EXPECT_EQ(Memoire(), "1@ASPIRINE 500MG CPR@Ulc\xE8re \xE9volutif\r\n0@ASPIRINE 500MG CPR@Enfant de moins de 15 ans");
    // Two terms of one label give one row; the count is the alerts'.
    SetString_Vdx("3000011\r\nK72");
    ASSERT_EQ(ContreIndicationsProfil_Vdx(nullptr, nullptr, nullptr, 100), 3);
    EXPECT_EQ(Memoire(),
              "0@DOLIPRANE 1000MG GELULE@Insuffisance h\xE9patique\r\n0@DOLIPRANE 1000MG GELULE@Enfant de moins de 15 ans");
    SetString_Vdx("3000001@@3000002\r\nK72");
    EXPECT_EQ(ContreIndicationsProfilPharm_Vdx(nullptr, nullptr, nullptr, 0, 5), 0);

    ReconnecteEnTableau();
    SAFEARRAY* nul = nullptr;
    SAFEARRAY* produits = essai::TableauDeChaines({"3000002"});
    SAFEARRAY* termes = essai::TableauDeChaines({Ulcere});
    SAFEARRAY* fiches = essai::TableauDeFiches(3);
    EXPECT_EQ(ContreIndicationsProfil_Vdx(&produits, &termes, &fiches, 400), 1);
    EXPECT_EQ(essai::Texte(*hote::Chaine(fiches->pvData, 2)), "Ulc\xE8re \xE9volutif");
    EXPECT_EQ(ContreIndicationsProfil_Vdx(&nul, &termes, &fiches, 0), -10);
    EXPECT_EQ(ContreIndicationsProfil_Vdx(&produits, &nul, &fiches, 0), -20);
    EXPECT_EQ(ContreIndicationsProfil_Vdx(&produits, &termes, &nul, 0), -30);
    VideTableau(fiches, {TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Texte});
    for (SAFEARRAY* t : {produits, termes, fiches}) SafeArrayDestroy(t);
}

TEST_F(ContreIndicationsExports, TheTermStandingForAPathologyCode) {
    const auto equivalent = [](const char* code) {
        const int32_t n = EquivalentPathologie_Vdx(code, nullptr);
        return n == 1 ? Memoire() : std::to_string(n);
    };
    EXPECT_EQ(equivalent(Hepatique), Hepatique);          // a contra-indication term
    EXPECT_EQ(equivalent(SujetAge), SujetAge);            // a precaution term
    EXPECT_EQ(equivalent("IN00000001"), Ulcere);          // by equivalence
    EXPECT_EQ(equivalent(PathologieUlcere), "0");         // an indication without equivalent
    EXPECT_EQ(equivalent("K26"), Ulcere);                 // by its CIM10 code
    EXPECT_EQ(equivalent("K2"), "0");
    EXPECT_EQ(equivalent(""), "-10");
    EXPECT_EQ(equivalent("CI000000011"), "-10");
    EXPECT_EQ(equivalent(nullptr), "-10");
}

}  // namespace
}  // namespace vdx
