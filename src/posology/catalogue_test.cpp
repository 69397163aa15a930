// The posology catalogue: the level of a posology against a patient, the
// terrain's phrase, the checks of the lists and their order, the second
// list's fit to an indication and a profile, the doctor's posologies, and
// the loading of one posology into the host's form.
#include "posology/catalogue.h"

#include <gtest/gtest.h>

#include <cmath>

#include "session/messages.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using namespace niveaux_posologie;

PatientPosologie Patient(char terrain, int32_t age = 0, float poids = 0, char sexe = '\0') {
    return {terrain, sexe, age, poids};
}

TerrainPosologie Terrain(const char* lettres, float ageMin = 0, const char* uniteMin = "", float ageMax = 0,
                         const char* uniteMax = "", float poidsMin = 0, float poidsMax = 0) {
    return {lettres, ageMin, uniteMin, ageMax, uniteMax, poidsMin, poidsMax};
}

TEST(NiveauPosologie, AnAdultMatchesAdultAndAllAgeTerrainsBySex) {
    const PatientPosologie femme = Patient('A', 0, 0, 'F'), homme = Patient('A', 0, 0, 'H');
    for (const char* t : {"A", "AE", "AF", "T", "TH"}) EXPECT_EQ(NiveauPosologie(Terrain(t), false, femme), Applicable) << t;
    for (const char* t : {"AD", "AX", "E", "S", "??", ""}) EXPECT_EQ(NiveauPosologie(Terrain(t), false, femme), Exclue) << t;
    EXPECT_EQ(NiveauPosologie(Terrain("AH"), false, femme), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("AF"), false, homme), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("AF"), false, Patient('A', 0, 0, 'M')), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("AH"), true, homme), Seule);  // implied
    EXPECT_EQ(NiveauPosologie(Terrain("S"), false, Patient('S')), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("T"), false, Patient('X')), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("A"), false, Patient('\0')), Exclue);
}

TEST(NiveauPosologie, AChildsAgeInMonthsFromItsBoundsEachUnitItsOwnWay) {
    const TerrainPosologie six12 = Terrain("E", 6, "A", 12, "A");
    EXPECT_EQ(NiveauPosologie(six12, false, Patient('E', 72)), Applicable);  // the lower bound is in
    EXPECT_EQ(NiveauPosologie(six12, false, Patient('E', 143)), Applicable);
    EXPECT_EQ(NiveauPosologie(six12, false, Patient('E', 144)), Exclue);     // the upper one is not
    EXPECT_EQ(NiveauPosologie(Terrain("AD", 6, "A", 12, "A"), false, Patient('E', 100)), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("EN", 6, "A", 12, "A"), false, Patient('E', 100)), Applicable);
    // A bound of 0 is none on its side: from 6 years.
    EXPECT_EQ(NiveauPosologie(Terrain("E", 6, "A", 0, ""), false, Patient('E', 216)), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("E", 0, "", 6, "A"), false, Patient('E', 71)), Applicable);
    // Days by 30, truncated: 95 days are 3 months.
    EXPECT_EQ(NiveauPosologie(Terrain("E", 95, "J", 0, ""), false, Patient('E', 36)), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("N", 95, "J", 0, ""), false, Patient('N', 2)), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("N", 95, "J", 0, ""), false, Patient('N', 3)), Applicable);
    // Weeks count 5 months whatever their number, so 2 to 10 weeks are
    // equal bounds, which ask for at least the bound.
    EXPECT_EQ(NiveauPosologie(Terrain("N", 2, "S", 10, "S"), false, Patient('N', 4)), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("N", 2, "S", 10, "S"), false, Patient('N', 29)), Applicable);
    // Another unit gives 0 months.
    EXPECT_EQ(NiveauPosologie(Terrain("N", 0, "", 2, "X"), false, Patient('N', 1)), Exclue);
}

TEST(NiveauPosologie, AnAgeOfZeroOnlyLeavesOutTerrainsBeyondFifteenYears) {
    EXPECT_EQ(NiveauPosologie(Terrain("E", 6, "A", 15, "A"), false, Patient('E')), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("E", 6, "A", 16, "A"), false, Patient('E')), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("E", 200, "M", 0, ""), false, Patient('E')), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("N", 1, "M", 24, "M"), false, Patient('N')), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("N", 6, "M", 6, "M"), false, Patient('N')), Exclue);  // equal: at least 6
}

TEST(NiveauPosologie, TheWeightBoundsWhateverTheTerrain) {
    EXPECT_EQ(NiveauPosologie(Terrain("A", 0, "", 0, "", 10, 10), false, Patient('A', 0, 12)), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("A", 0, "", 0, "", 10, 10), false, Patient('A', 0, 9.5f)), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("A", 0, "", 0, "", 10, 20), false, Patient('A', 0, 20)), Exclue);
    EXPECT_EQ(NiveauPosologie(Terrain("A", 0, "", 0, "", 10, 20), false, Patient('A', 0, 10)), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("A", 0, "", 0, "", 50, 0), false, Patient('A', 0, 600)), Applicable);
    EXPECT_EQ(NiveauPosologie(Terrain("A", 0, "", 0, "", 10, 20), false, Patient('A')), Applicable);  // unknown
}

TEST(PhraseTerrain, AgesAndWeightsInWordsByTheirOwnUnits) {
    const std::pair<TerrainPosologie, const char*> cas[] = {
        {Terrain("E", 6, "A", 12, "A", 20, 40), "Enfant de 6 ans \xE0 12 ans de 20 Kg \xE0 40 Kg"},
        {Terrain("N", 0, "", 30.9f, "M"), "Nourrisson de moins de 30 mois"},
        {Terrain("S", 65, "A", 65, "A"), "Sujet \xE2g\xE9 de plus de 65 ans"},
        {Terrain("E", 1.5f, "A", 18, "M"), "Enfant de 1 an \xE0 18 mois"},
        {Terrain("N", 1, "S", 3, "S"), "Nourrisson de 1 semaine \xE0 3 semaines"},
        {Terrain("N", 1, "J", 28, "J"), "Nourrisson de 1 jour \xE0 28 jours"},
        {Terrain("T", 5, "X"), "Tout \xE2ge de 5 "},
        {Terrain("E", 0, "", 0, "", 0, 10), "Enfant de moins de 10 Kg"},
        {Terrain("E", 0, "", 0, "", 15, 0), "Enfant de 15 Kg"},
        {Terrain("ZZ", 0, "", 0, "", 15, 15), " de plus de 15 Kg"},
        {Terrain("E", NAN, "A"), "Enfant de 0 an"},
    };
    for (const auto& [terrain, phrase] : cas) EXPECT_EQ(PhraseTerrain(terrain), phrase) << phrase;
}

TEST(ProfilsSeRecouvrent, TheFilterWidenedByFivePercentEachWay) {
    EXPECT_TRUE(ProfilsSeRecouvrent("20-40", "42-50"));
    EXPECT_FALSE(ProfilsSeRecouvrent("20-40", "42.5-50"));
    EXPECT_TRUE(ProfilsSeRecouvrent("20-40", "10-19"));
    EXPECT_FALSE(ProfilsSeRecouvrent("20-40", "10-18.5"));
    EXPECT_TRUE(ProfilsSeRecouvrent("30-60", "40-50"));
    for (const char* autre : {"40", "", "-", "a-b", "20-", "20-40-60", "20 - 40"})
        EXPECT_FALSE(ProfilsSeRecouvrent(autre, "10-50")) << autre;
}

// A product 3000001 with posologies for each terrain, one whose terrain is
// missing, an implied one; 3000003 for the second list; 3000002 for the
// order of titles; the doctor's posologies beside them.
class Posologies : public essai::SurUneBase<Posologies> {
public:
    static void Remplit(BaseDeTest& b) {
        struct T {
            int code;
            const char* terrain;
            double ageMin;
            const char* uniteMin;
            double ageMax;
            const char* uniteMax;
            double poidsMin, poidsMax;
        };
        for (const T& t : {T{1, "A", 0, "", 0, "", 0, 0}, T{2, "E", 6, "A", 12, "A", 20, 40},
                           T{3, "N", 0, "", 30, "M", 3, 4}, T{4, "S", 65, "A", 0, "", 0, 0}, T{5, "AE", 0, "", 0, "", 0, 0},
                           T{6, "A", 0, "", 0, "", 500, 0}})
            b.Ajoute("VDXPPTER", {{"CodeTerrain", t.code}, {"Terrain", t.terrain}, {"AgeMin", t.ageMin},
                                  {"UniteAgeMin", t.uniteMin}, {"AgeMax", t.ageMax}, {"UniteAgeMax", t.uniteMax},
                                  {"PoidsMin", t.poidsMin}, {"PoidsMax", t.poidsMax}});
        struct P {
            const char* cip;
            const char* rang;
            int terrain, implicite, amm, nature, voie, profil;
        };
        for (const P& p : {P{"3000001", "01", 1, 0, 101, 1, 1, 0}, P{"3000001", "02", 2, 0, 0, 0, 0, 0},
                           P{"3000001", "03", 99, 0, 0, 0, 0, 0}, P{"3000001", "04", 4, 1, 0, 0, 1, 0},
                           P{"3000001", "05", 3, 0, 0, 0, 0, 0}, P{"3000001", "06", 6, 0, 0, 0, 0, 0},
                           P{"3000002", "01", 1, 0, 0, 2, 0, 0}, P{"3000002", "02", 1, 0, 0, 1, 0, 0},
                           P{"3000003", "01", 1, 0, 102, 0, 0, 1}, P{"3000003", "02", 1, 0, 101, 0, 0, 0},
                           P{"3000003", "03", 1, 0, 0, 0, 0, 2}, P{"3000003", "04", 1, 0, 7, 0, 0, 2},
                           P{"3000003", "05", 5, 0, 0, 0, 0, 3}})
            b.Ajoute("VDXPPROD", {{"CodeCIP", p.cip}, {"Rang", p.rang}, {"CodeTerrain", p.terrain},
                                  {"Implicite", p.implicite}, {"CodeAMM", p.amm}, {"CodeNature", p.nature},
                                  {"CodeVoie", p.voie}, {"CodeProfil", p.profil}, {"DoseMin", 0.5},
                                  {"DoseMax", std::nan("")}, {"CodeUnite", 14}, {"QuantiteRef", 1},
                                  {"Conversion", 1}, {"TypeRef", "P"}, {"PrisesMin", 1}, {"PrisesMax", 3},
                                  {"Intervalle", 0}, {"CodePeriode", 40}, {"CodeMoment", 5}, {"DureeMin", 7},
                                  {"DureeMax", 10}, {"CodeDuree", 40}, {"DoseMaximum", 4.25}, {"MaximumRapporte", -1},
                                  {"CodePeriodeMaximum", 40}, {"CodeSpecification", 2}, {"CodeSpecification2", 3},
                                  {"NombreModeles", 1}});
        b.Ajoute("VDXPTEXT", {{"CodePosologie", "300000101"}, {"Texte", "Un texte libre."}});
        b.Ajoute("VDXPTEXT", {{"CodePosologie", "300000102"}, {"Texte", std::string(40000, 'x')}});
        b.Ajoute("VDXPNAT", {{"Code", 1}, {"Libelle", "d'attaque"}}).Ajoute("VDXPNAT", {{"Code", 2}, {"Libelle", "d'entretien"}});
        b.Ajoute("VDXPVOI", {{"Code", 1}, {"Libelle", "orale"}});
        for (auto [code, libelle, type, valeur] : {std::tuple{1, "Clairance 30 à 60", 1, "30-60"},
                                                   {2, "Clairance 10 à 30", 1, "10-30"}, {3, "Hépatique", 2, "HEPATIQUE"}})
            b.Ajoute("VDXPPRO", {{"Code", code}, {"Libelle", libelle}, {"TypeProfil", type}, {"ValeurProfil", valeur}});
        b.Ajoute("VDXVAMM", {{"CodeTerme", "0000000101"}, {"TypeAMM", "1"}, {"Libelle", "Douleurs"}});
        b.Ajoute("VDXVAMM", {{"CodeTerme", "0000000102"}, {"TypeAMM", "1"}, {"Libelle", "Fièvre"}});
        for (auto [terme, type, lie] : {std::tuple{"0000000101", "01", "R52"}, {"0000000102", "01", "R50"},
                                        {"0000000101", "02", "R51"}})
            b.Ajoute("VDXVAMMC", {{"CodeTerme", terme}, {"TypeLien", type}, {"CodeLie", lie}});
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3000001"}, {"CodeUnitePrise", 14}, {"CodeUnitePrise2", 42}});
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3000002"}, {"CodeUnitePrise", 42}, {"CodeUnitePrise2", 14}});
        essai::RemplitProduits(b);
    }
    static void SetUpTestSuite() {
        essai::SurUneBase<Posologies>::SetUpTestSuite();
        medecin_ = new BaseDeTest(Emplacement::Medecin);
        struct M {
            const char* code;
            const char* libelle;
            int unite, unite2, modeles;
        };
        for (const M& m : {M{"#3000001001", "Ma posologie", 14, 0, 0}, M{"#3000001002", "Autre unité", 61, 0, 0},
                           M{"#3000001003", "Rien", 0, 0, 0}, M{"#3000001004", "Modèle", 0, 0, 2},
                           M{"#3000009001", "Voisine", 42, 14, 0}, M{"#3000000001", "Voisine avant", 14, 0, 0}})
            medecin_->Ajoute("POSO", {{"CodePosologie", m.code}, {"CodeCIP", std::string(m.code + 1, 7)},
                                      {"Libelle", m.libelle}, {"CodeUnite", m.unite}, {"CodeUnite2", m.unite2},
                                      {"NombreModeles", m.modeles}, {"DoseMin", 2.5}, {"TypeRef", "S"}});
        medecin_->Ajoute("TEXU", {{"CodePosologie", "#3000001001"}, {"Texte", "Texte du médecin"}});
        medecin_->Repertoire();
    }
    static void TearDownTestSuite() {
        delete medecin_;
        medecin_ = nullptr;
        essai::SurUneBase<Posologies>::TearDownTestSuite();
    }
    void AvecMedecin() {
        session().CheminMedecin = medecin_->Repertoire() + "/";
        session().ConnecteMedecin = true;
    }
    static int32_t Liste(const char* code, const char* terrain, int32_t age = 0, int32_t poids = 0, int32_t taille = 0,
                         const char* sexe = "F") {
        return PosoListe_Vdx(code, nullptr, terrain, age, poids, taille, sexe);
    }
    static int32_t Liste2(const char* code, const char* indication, int32_t mode, std::string filtres = "") {
        session().ChaineMemoire = filtres;
        return PosoListe2_Vdx(code, nullptr, "A", 0, 0, 0, "F", indication, mode, nullptr);
    }
    static inline BaseDeTest* medecin_ = nullptr;
};

TEST_F(Posologies, TheChecksOfTheListsInTheirOrder) {
    EXPECT_EQ(Liste(nullptr, "A"), -10);
    EXPECT_EQ(Liste("", "A"), -10);
    EXPECT_EQ(Liste("300000", "A"), -13);
    EXPECT_EQ(Liste("3400930000011", "A"), -13);  // not mapped under CIP13Actif 0
    EXPECT_EQ(Liste("3000001", "A", -1, -1, -1), -50);
    EXPECT_EQ(Liste("3000001", "A", 0, -1, -1), -60);
    EXPECT_EQ(Liste("3000001", "A", 0, 0, -1), -70);
    for (int32_t age : {24, 30, 217}) EXPECT_EQ(Liste("3000001", "E", age), -50) << age;
    for (int32_t age : {0, 31, 216}) EXPECT_EQ(Liste("3000001", "E", age), 1) << age;
    EXPECT_EQ(Liste("3000001", "N", 31), -50);
    EXPECT_EQ(Liste("3000001", "NX", 30), 1);
    EXPECT_EQ(Liste("3000001", "A", 9999), 1);
    EXPECT_EQ(PosoListe2_Vdx("3000001", nullptr, "E", 24, 0, 0, "F", "", 0, nullptr), -50);
    ActiveCIP13_Vdx(1);
    ASSERT_EQ(Liste("3400930000011", "S"), 1);
    EXPECT_TRUE(Memoire().starts_with("1@300000104@S")) << Memoire();
    ReconnecteEnTableau();
    EXPECT_EQ(Liste("3000001", "E", 24), -50);  // before the array
    EXPECT_EQ(Liste("3000001", "A"), -20);
    DeConnection2_Vdx();
    EXPECT_EQ(Liste("3000001", "A"), -2);
}

TEST_F(Posologies, AnAgentIsToldOfTheCallFirstConnectedOrNot) {
    notices.agents.insert(messages::FenetreAgent);
    ReconnecteEnTableau();
    EXPECT_EQ(Liste("3400930000011", "A"), -13);
    DeConnection2_Vdx();
    EXPECT_EQ(PosoListe2_Vdx("abc", nullptr, "A", 0, 0, 0, "F", "", 0, nullptr), -2);
    ASSERT_EQ(notices.notifications.size(), 2u);
    EXPECT_EQ(notices.notifications[0].texte, "Posoliste@CodeCIP=3400930000011@");
    EXPECT_EQ(notices.notifications[1].texte, "Posoliste2@CodeCIP=abc@");
}

TEST_F(Posologies, RowsRankedThenSortedByLevelAndTitle) {
    // A child of 8 years and 25 kg: the child's posology is the only one
    // that applies and comes up to 1; the weights of 3.5 kg and 600 kg
    // come from grams and kilograms.
    ASSERT_EQ(Liste("3000001", "E", 96, 25000), 1);
    EXPECT_EQ(Memoire(),
              "1@300000102@Enfant de 6 ans \xE0 12 ans de 20 Kg \xE0 40 Kg\r\n"
              "3@300000103@ de 6 ans \xE0 12 ans de 20 Kg \xE0 40 Kg\r\n"  // no terrain: the one before stays
              "3@300000106@Adulte de 500 Kg\r\n"
              "3@300000101@Adulte. Traitement d'attaque. Douleurs. Voie orale\r\n"
              "3@300000105@Nourrisson de moins de 30 mois de 3 Kg \xE0 4 Kg\r\n"
              "3@300000104@Sujet \xE2g\xE9 de 65 ans. Voie orale. (Implicite)");
    ASSERT_EQ(Liste("3000001", "N", 12, 3500), 1);
    EXPECT_TRUE(Memoire().starts_with("1@300000105@N")) << Memoire();
    // Two that apply stay 2: 600 is in kilograms.
    ASSERT_EQ(Liste("3000001", "A", 0, 600), 1);
    EXPECT_TRUE(Memoire().starts_with("2@300000106@Adulte de 500 Kg\r\n2@300000101@Adul")) << Memoire();
    ASSERT_EQ(Liste("3000001", "A", 0, 601), 1);
    EXPECT_TRUE(Memoire().starts_with("1@300000101@A")) << Memoire();
    // An implied one is 1.
    ASSERT_EQ(Liste("3000001", "S"), 1);
    EXPECT_TRUE(Memoire().starts_with("1@300000104@S")) << Memoire();
    // An empty terrain applies nowhere: the titles alone order the rows.
    ASSERT_EQ(Liste("3000002", ""), 1);
    EXPECT_EQ(Memoire(), "3@300000202@Adulte. Traitement d'attaque\r\n3@300000201@Adulte. Traitement d'entretien");
    ASSERT_EQ(Liste("3999999", "A"), 1);
    EXPECT_EQ(Memoire(), "");
}

TEST_F(Posologies, TheDoctorsPosologiesComeFirstWhenTheirUnitsAreTheProducts) {
    AvecMedecin();
    ASSERT_EQ(Liste("3000001", "S"), 1);
    EXPECT_TRUE(Memoire().starts_with("0@#3000001001@Ma posologie\r\n0@#3000001004@Mod\xE8le\r\n0@#3000009001@Voisine\r\n1@300000104@Sujet")) << Memoire();
    // Of an unknown product, every one from the code on.
    ASSERT_EQ(Liste("3000005", "S"), 1);
    EXPECT_EQ(Memoire(), "0@#3000009001@Voisine");
    EXPECT_EQ(PosoExiste_Vdx("3000001"), 3);
    EXPECT_EQ(PosoExiste_Vdx("3000008"), 2);
    EXPECT_EQ(PosoExiste_Vdx("2000012"), 0);
    EXPECT_EQ(PosoExiste_Vdx("300000"), -13);
    session().ConnecteMedecin = false;
    EXPECT_EQ(PosoExiste_Vdx("3000008"), 0);
    EXPECT_EQ(PosoExiste_Vdx("3000003"), 1);
}

TEST_F(Posologies, TheSecondListFitsIndicationsByKeyOrLinkedCodeAndProfiles) {
    // By key: the posology of that indication, without a profile.
    ASSERT_EQ(Liste2("3000003", "0000000101", 0), 1);
    EXPECT_TRUE(Memoire().starts_with("2@300000305@Adulte - Enfant. H\xE9patique@@@H\xE9patique@Adulte - Enfant@@0@0@3@5@0\r\n"))
        << Memoire();
    EXPECT_TRUE(Memoire().ends_with("\r\n4@300000302@Adulte. Douleurs@Douleurs@@@Adulte@@101@0@0@1@0")) << Memoire();
    // By the beginning of a linked code, links of status "01" only: R50
    // brings Fièvre, whose posology has a profile none asked for.
    ASSERT_EQ(Liste2("3000003", "R5", 1), 1);
    EXPECT_EQ(Memoire().find("4@300000301"), std::string::npos) << Memoire();
    EXPECT_NE(Memoire().find("4@300000302"), std::string::npos);
    ASSERT_EQ(Liste2("3000003", "R51", 1), 1);
    EXPECT_EQ(Memoire().find("\n4@"), std::string::npos);
    ASSERT_EQ(Liste2("3000003", "R", 2), 1);  // another mode asks nothing
    EXPECT_EQ(Memoire().find("\n4@"), std::string::npos);
    // Profiles alone: a range at the edge of the 5 % margin; a text, which
    // no indication may come with.
    // A one-digit code is no indication: it fits when none is asked.
    ASSERT_EQ(Liste2("3000003", "", 0, "1@31.5-40\r\n"), 1);
    EXPECT_TRUE(Memoire().ends_with("\r\n4@300000304@Adulte. Clairance 10 \xE0 30@@@Clairance 10 \xE0 30@Adulte@@7@0@2@1@0"
                                    "\r\n4@300000303@Adulte. Clairance 10 \xE0 30@@@Clairance 10 \xE0 30@Adulte@@0@0@2@1@0"))
        << Memoire();
    ASSERT_EQ(Liste2("3000003", "", 0, "1@32-40\r\n2@PATIQ\r\n"), 1);
    EXPECT_EQ(Memoire().find("4@300000303"), std::string::npos);
    EXPECT_NE(Memoire().find("4@300000305@Adulte - Enfant. H\xE9patique@@@H\xE9patique@Adulte - Enfant@@0@0@3@5@0"),
              std::string::npos);
    ASSERT_EQ(Liste2("3000003", "0000000101", 0, "2@PATIQ\r\n"), 1);
    EXPECT_EQ(Memoire().find("\n4@"), std::string::npos);
    ASSERT_EQ(Liste2("3000003", "", 0, "9@x\r\n"), 1);
    EXPECT_EQ(Memoire().find("\n4@"), std::string::npos);  // no profile of type 9
    ASSERT_EQ(Liste2("3000003", "0", 0), 1);              // too short: nothing asked
    EXPECT_EQ(Memoire().find("\n4@"), std::string::npos);
}

TEST_F(Posologies, TheSecondListsRecordsInMode0) {
    ReconnecteEnTableau();
    SAFEARRAY* lignes = essai::TableauDeFiches(14);
    SAFEARRAY* filtres = essai::TableauDeFiches(2);
    ASSERT_TRUE(hote::Redimensionne(filtres, 1));
    auto* f = static_cast<VdxFiltreProfil*>(filtres->pvData);
    hote::RangeOctets(&f->ValeurProfil, "PATIQ");
    f->TypeProfil = 2;
    ASSERT_EQ(PosoListe2_Vdx("3000003", &lignes, "A", 0, 0, 0, "F", "", 0, &filtres), 1);
    ASSERT_EQ(lignes->rgsabound[0].cElements, 5u);
    const auto* l = static_cast<VdxLignePosologie2*>(lignes->pvData);
    EXPECT_EQ(l[4].Niveau, 4);
    EXPECT_EQ(essai::Texte(l[4].Titre), "Adulte - Enfant. H\xE9patique");
    EXPECT_EQ(essai::Texte(l[4].PhraseTerrain), "Adulte - Enfant");
    EXPECT_EQ(l[4].CodeTerrain, 5);
    EXPECT_EQ(l[4].CodeProfil, 3);
    EXPECT_EQ(l[4].Implicite, 0);
    // A null filter array asks for nothing.
    ASSERT_EQ(PosoListe2_Vdx("3000003", &lignes, "A", 0, 0, 0, "F", "", 0, nullptr), 1);
    EXPECT_EQ(static_cast<VdxLignePosologie2*>(lignes->pvData)[4].Niveau, 2);
    VideTableau(lignes, GabaritDe<LignePosologie>());
    VideTableau(filtres, {TypeChamp::Texte, TypeChamp::Entier});
    SafeArrayDestroy(lignes);
    SafeArrayDestroy(filtres);
}

TEST_F(Posologies, LoadingAPosologyOfTheBaseOrOfTheDoctors) {
    ASSERT_EQ(PosoLoad_Vdx("300000101", nullptr), 1);
    EXPECT_EQ(Memoire(), "0.5@@14@42@1@1@1@3@0@40@5@7@10@40@4.25@-1@40@2@3@1@300000101@3000001@"
                         "Adulte. Traitement d'attaque. Douleurs. Voie orale@P@Un texte libre.");
    // The other unit is the product's first when the posology is in its
    // second; the free text is cut.
    ASSERT_EQ(PosoLoad_Vdx("300000201", nullptr), 1);
    EXPECT_TRUE(Memoire().starts_with("0.5@@14@4")) << Memoire();
    ASSERT_EQ(PosoLoad_Vdx("300000102", nullptr), 1);
    EXPECT_EQ(Memoire().size() - Memoire().rfind('@') - 1, 32767u);
    EXPECT_EQ(PosoLoad_Vdx("30000010", nullptr), -13);
    EXPECT_EQ(PosoLoad_Vdx("3000001011", nullptr), -13);
    EXPECT_EQ(PosoLoad_Vdx("300000199", nullptr), -90);
    EXPECT_EQ(PosoLoad_Vdx("", nullptr), -10);
    EXPECT_EQ(PosoLoad_Vdx("#3000001001", nullptr), -4);
    AvecMedecin();
    EXPECT_EQ(PosoLoad_Vdx("#300000100", nullptr), -13);
    EXPECT_EQ(PosoLoad_Vdx("#3000001999", nullptr), -90);
    ASSERT_EQ(PosoLoad_Vdx("#3000001001", nullptr), 1);
    EXPECT_EQ(Memoire(), "2.5@0@14@0@0@0@0@0@0@0@0@0@0@0@0@0@0@0@0@0@#3000001001@3000001@Ma posologie@S@Texte du m\xE9"
                         "decin");

    ReconnecteEnTableau();
    VdxPosologieHote h{};
    hote::RangeOctets(&h.Libelle, "ancien");
    EXPECT_EQ(PosoLoad_Vdx("300000101", nullptr), -20);
    ASSERT_EQ(PosoLoad_Vdx("300000202", &h), 1);
    EXPECT_EQ(h.DoseMin.Valeur, 0.5f);
    EXPECT_TRUE(std::isnan(h.DoseMax.Valeur));
    EXPECT_EQ(h.CodeUnite2, 42);
    EXPECT_EQ(h.DoseMaximum.Valeur, 4.25f);
    EXPECT_EQ(h.NombreModeles, 1);
    EXPECT_EQ(essai::Texte(h.Libelle), "Adulte. Traitement d'attaque");
    EXPECT_EQ(essai::Texte(h.Texte), "");
    EXPECT_EQ(PosoLoad_Vdx("3000002", &h), -13);
    EXPECT_EQ(essai::Texte(h.Libelle), "Adulte. Traitement d'attaque");  // a bad code empties nothing
    EXPECT_EQ(PosoLoad_Vdx("300000299", &h), -90);
    EXPECT_EQ(essai::Texte(h.Libelle), "");  // the strings were emptied
    EXPECT_EQ(h.CodeUnite2, 42);             // the numbers stay
    essai::LibereFiche(&h, GabaritDe<PosologieHote>());
}

TEST_F(Posologies, UnitsOfTakeOfAProduct) {
    ASSERT_EQ(UnitesPrisesProduit_Vdx("3000002", nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "42@14");
    EXPECT_EQ(UnitesPrisesProduit_Vdx("3000009", nullptr, nullptr), -90);
    EXPECT_EQ(UnitesPrisesProduit_Vdx("30000099", nullptr, nullptr), -13);
    ReconnecteEnTableau();
    int32_t u1 = 0, u2 = 0;
    ASSERT_EQ(UnitesPrisesProduit_Vdx("3000001", &u1, &u2), 1);
    EXPECT_EQ(u1, 14);
    EXPECT_EQ(u2, 42);
    EXPECT_EQ(UnitesPrisesProduit_Vdx("3000001", &u1, nullptr), -30);
}

}  // namespace
}  // namespace vdx
