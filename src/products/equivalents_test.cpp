// The equivalents of a product: classes walked and skipped, candidates
// filtered, levels by dosage and form, "Z" classes, the sort, the limit;
// the equal dosages and compatible forms; the equivalent indications.
#include "products/equivalents.h"

#include <gtest/gtest.h>

#include <sstream>

#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// 3100001 DOLIPRANE 500 mg tablets; in class C1 with the 1000 mg tablets
// (2), the effervescent 500 mg (1), two other 500 mg tablets (0, one
// without price), a hospital one, a deleted one, one without
// identification, one without product record, a line by common name and
// one of a price of two digits. C2 is no equivalence class; C3, without
// label, holds the 1000 mg tablets and those of 1 g; Z1 keeps the same
// name only.
class Equivalents : public essai::SurUneBase<Equivalents> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        struct P {
            const char* cip;
            const char* nom;
            const char* dosage;
            const char* forme;
            const char* prix;
            int drapeaux;
            const char* suppression;
        };
        for (const P& p : {P{"3100001", "DOLIPRANE", "500 mg", "CP01", "0000196", 0, ""},
                           P{"3100002", "DOLIPRANE", "1000 mg", "CP01", "0000210", 0, ""},
                           P{"3100003", "DOLIPRANE", "500 mg", "CE01", "0000150", 0, ""},
                           P{"3100004", "PARACETAMOL GNR", "500 mg", "CP02", "0000120", 0, ""},
                           P{"3100005", "PARACETAMOL X", "500 mg", "CP01", "0000000", 0, ""},
                           P{"3100006", "DOLIHOSP", "500 mg", "CP01", "0000100", VDXPRO::Hospitalier, ""},
                           P{"3100007", "DOLIVIEUX", "500 mg", "CP01", "0000100", 0, "A01012020"},
                           P{"3100010", "PARACETAMOL Y", "500 mg", "CP01", "12", 0, ""},
                           P{"3100011", "DOLIPRANE", "1 g", "CP01", "0000220", 0, ""},
                           P{"3100000", "SANS CLASSE", "", "CP01", "0000100", 0, ""},
                           P{"9900000", "SANS CLASSE", "", "CP01", "0000100", 0, ""}}) {
            b.Ajoute("VDXPRO", {{"CodeCIP", p.cip}, {"Libelle", std::string(p.nom) + " " + p.dosage},
                                {"DonneeEco2", p.prix}, {"CodeTSS", "2"}, {"CodeLaboratoire", "SANO"},
                                {"Drapeaux", p.drapeaux}, {"Suppression", p.suppression}});
            b.Ajoute("VDXIDPRO", {{"CodeCIP", p.cip}, {"Denomination", p.nom}, {"Dosage", p.dosage},
                                  {"CodeForme", p.forme}, {"QuantitePresentation", 16}, {"CodePresentation", 14},
                                  {"CodeContenant", 1}, {"QuantiteUnitePresentation", 1}});
        }
        // Without product record; a line by common name.
        for (const char* cip : {"3100009", "9000001"})
            b.Ajoute("VDXIDPRO", {{"CodeCIP", cip}, {"Denomination", "AUTRE"}, {"Dosage", "500 mg"},
                                  {"CodeForme", "CP01"}, {"QuantitePresentation", 1}, {"CodePresentation", 2},
                                  {"QuantiteUnitePresentation", 150}, {"CodeUnitePresentation", 42}});
        b.Ajoute("VDXIDFOR", {{"CodeForme", "CP01"}, {"Libelle", "comprimé"}, {"LibelleCle", "COMPRIME"}});
        b.Ajoute("VDXIDPRE", {{"Code", 14}, {"Libelle", "comprimé"}, {"LibellePluriel", "comprimés"}});
        b.Ajoute("VDXIDPRE", {{"Code", 2}, {"Libelle", "flacon"}, {"LibellePluriel", "flacons"}});
        b.Ajoute("VDXIDUPR", {{"Code", 42}, {"Libelle", "ml"}, {"LibellePluriel", "ml"}});
        b.Ajoute("VDXIDCON", {{"Code", 1}, {"Libelle", "boîte"}, {"LibellePluriel", "boîtes"}});
        b.Ajoute("VDXTSS", {{"Code", "2"}, {"Taux", 65.0}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "C1"}, {"Libelle", "Paracétamol"}, {"LibelleCle", "PARACETAMOL"}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "C2"}, {"Libelle", "Antalgiques"}, {"LibelleCle", "ANTALGIQUES*"}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "Z1"}, {"Libelle", "Doliprane"}, {"LibelleCle", "DOLIPRANE"}});
        for (const char* cip : {"3100001", "3100002", "3100003", "3100004", "3100005", "3100006", "3100007", "3100008",
                                "3100009", "3100010", "9000001"})
            b.Ajoute("VDXCLAP", {{"CodeClasse", "C1"}, {"CodeCIP", cip}});
        for (auto [classe, cip] : {std::pair{"C2", "3100001"}, {"C2", "3100004"}, {"C3", "3100002"}, {"C3", "3100011"},
                                   {"Z1", "3100001"}, {"Z1", "3100003"}, {"Z1", "3100004"}})
            b.Ajoute("VDXCLAP", {{"CodeClasse", classe}, {"CodeCIP", cip}});
        b.Ajoute("VDXVAMM", {{"CodeTerme", "0000000202"}, {"TypeAMM", "1"}, {"Libelle", "Fièvre"}});
        for (const char* equivalent : {"0000000202", "0000000201", "0000000999"})
            b.Ajoute("VDXVAMME", {{"CodeTerme", "0000000201"}, {"CodeEquivalent", equivalent}});
    }
    // The rows as "code:level" from the flat text, fields 5 and 1.
    static std::string Codes() {
        std::string codes, ligne;
        std::istringstream lignes(Memoire());
        while (std::getline(lignes, ligne)) {
            std::vector<std::string> champs;
            std::istringstream f(ligne);
            for (std::string c; std::getline(f, c, '@');) champs.push_back(c);
            codes += champs.at(2) + ":" + champs.at(4) + ":" + champs.at(0) + " ";
        }
        return codes;
    }
};

TEST_F(Equivalents, LevelsFiltersAndTheSortWithinEachClass) {
    ASSERT_EQ(ProduitsEquivalents_Vdx("3100001", nullptr, -1), 7);
    EXPECT_EQ(Codes(),
              "C1:3100004:0 C1:3100009:0 C1:3100005:0 C1:3100010:0 C1:3100003:1 C1:3100002:2 Z1:3100003:2 ");
    EXPECT_EQ(Memoire().substr(0, Memoire().find('\r')),
              "0@65@C1@Parac\xE9tamol@3100004@PARACETAMOL GNR 500 mg @@16 comprim\xE9s@0000120@bo\xEEte@"
              "Sanofi Aventis France");
    // Without product record: no rate, no price, no laboratory.
    EXPECT_NE(Memoire().find("0@0@C1@Parac\xE9tamol@3100009@AUTRE 500 mg @comprim\xE9@1 flacon de 150 ml@0000000@flacon@\r"),
              std::string::npos);
    ActiveHospitaliers_Vdx(1);
    ASSERT_EQ(ProduitsEquivalents_Vdx("3100001", nullptr, -1), 8);
    EXPECT_NE(Codes().find("C1:3100006:0"), std::string::npos);
}

TEST_F(Equivalents, TheLimitCountsTheRowsKeptAClass) {
    ASSERT_EQ(ProduitsEquivalents_Vdx("3100001", nullptr, 2), 3);
    EXPECT_EQ(Codes(), "C1:3100003:1 C1:3100002:2 Z1:3100003:2 ");
    EXPECT_EQ(ProduitsEquivalents_Vdx("3100001", nullptr, 0), 0);
    EXPECT_EQ(ProduitsEquivalents_Vdx("3100001", nullptr, -2), 0);
}

TEST_F(Equivalents, CodesAndProductsWithoutClass) {
    EXPECT_EQ(ProduitsEquivalents_Vdx("9900000", nullptr, -1), -90);  // no key at or behind
    EXPECT_EQ(ProduitsEquivalents_Vdx("3100000", nullptr, -1), 0);    // another product's keys follow
    EXPECT_EQ(ProduitsEquivalents_Vdx("3100008", nullptr, -1), 0);    // no identification
    EXPECT_EQ(ProduitsEquivalents_Vdx("3100009", nullptr, -1), 0);    // no product record
    EXPECT_EQ(ProduitsEquivalents_Vdx(nullptr, nullptr, -1), -10);
    EXPECT_EQ(ProduitsEquivalents_Vdx("310000", nullptr, -1), -13);
    ASSERT_EQ(ProduitsEquivalents_Vdx("3100002", nullptr, -1), 7);
    EXPECT_TRUE(Memoire().ends_with("0@65@C3@Libell\xE9 inconnu@3100011@DOLIPRANE 1 g @comprim\xE9@16 comprim\xE9s@0000220@bo\xEEte@"
                                    "Sanofi Aventis France"))
        << Memoire();  // "1 g" is "1000 mg"
    ReconnecteEnTableau();
    EXPECT_EQ(ProduitsEquivalents_Vdx("3100001", nullptr, -1), -20);
    EXPECT_EQ(AMMEquivalent_Vdx("0000000201", nullptr), -20);
    SAFEARRAY* termes = essai::TableauDeFiches(2);
    ASSERT_EQ(AMMEquivalent_Vdx("0000000201", &termes), 2);
    EXPECT_EQ(essai::Texte(static_cast<VdxDeuxChaines*>(termes->pvData)[0].Libelle), "Fi\xE8vre");
    VideTableau(termes, GabaritDe<LigneAMMEquivalent>());
    SafeArrayDestroy(termes);
    SAFEARRAY* lignes = essai::TableauDeFiches(11);
    ASSERT_EQ(ProduitsEquivalents_Vdx("3100002", &lignes, -1), 7);
    const auto* l = static_cast<VdxEquivalent*>(lignes->pvData);
    EXPECT_EQ(l[6].Niveau, 0);
    EXPECT_EQ(essai::Texte(l[6].CodeCIP), "3100011");
    EXPECT_EQ(l[6].TauxRemboursement.Valeur, 65);
    VideTableau(lignes, GabaritDe<LigneEquivalent>());
    SafeArrayDestroy(lignes);
}

TEST(DosagesEgaux, OnlyTheListedAmountsInTwoUnits) {
    for (auto [a, b] : {std::pair{"1 g", "1000 mg"}, {"1000 mg", "1 g"}, {"10 mg", "0,01 g"}, {"1 cg", "10 mg"},
                        {"1 \xB5g", "1 mcg"}, {"5 mg", "5 mg"}})
        EXPECT_TRUE(DosagesEgaux(a, b)) << a << " " << b;
    for (auto [a, b] : {std::pair{"2 g", "2000 mg"}, {"0,5 g", "500 mg"}, {"1 g", "1 mg"}, {"1 g ", "1000 mg"}})
        EXPECT_FALSE(DosagesEgaux(a, b)) << a << " " << b;
}

TEST(FormesCompatibles, FamiliesAndTheFirstTwoCharacters) {
    for (auto [a, b] : {std::pair{"AB01", "AC01"}, {"B001", "J001"}, {"D002", "B101"}, {"CP01", "CP02"}})
        EXPECT_TRUE(FormesCompatibles(a, b)) << a << " " << b;
    for (auto [a, b] : {std::pair{"CP01", "CE01"}, {"A001", "B001"}, {"C", "C"}, {"", ""}})
        EXPECT_FALSE(FormesCompatibles(a, b)) << a << " " << b;
}

TEST_F(Equivalents, EquivalentIndicationsWithTheirLabels) {
    ASSERT_EQ(AMMEquivalent_Vdx("0000000201", nullptr), 2);
    EXPECT_EQ(Memoire(), "0000000202@Fi\xE8vre\r\n0000000999@");
    EXPECT_EQ(AMMEquivalent_Vdx("0000000202", nullptr), 0);
    EXPECT_EQ(AMMEquivalent_Vdx("", nullptr), -10);
}

}  // namespace
}  // namespace vdx
