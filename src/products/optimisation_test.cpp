// The cost optimisation: the quantity to replace from packages or from a
// quantity in either unit, the exchange of units that stays for the rows
// after it, the rounding of packages, Rang and the order of the rows, the
// candidates' filters and age flags, the limit, the words; the packages of
// one product for a quantity.
#include "products/optimisation.h"

#include <gtest/gtest.h>

#include <sstream>

#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

constexpr int Ml = 43, Cuillere = 100, Comprime = 14;

// C1, syrups of 250 mg/5 ml walked from 3200001 (60 ml, in ml and in spoons
// of 5 ml, 12 a bottle): B 120 ml in ml; C in spoons only; D 100 ml, in ml
// and in spoons of 2.5 ml (40 a bottle); L without price; F without product
// record; P of a price of two digits; Q dearer; R whose ml tell no
// contents (a ratio of 0); a hospital one, a deleted
// one, one without identification, one of another dosage and one of
// another form, all left out. C2 holds A and B; X1 is no equivalence class.
// T1, tablets of 30: 3300002 has no price, 3300004 and 3300005 cost the
// same; Z1 keeps the name of 3300001. V1, the age flags of the names (no
// other name holds a blank and "E").
class Optimisations : public essai::SurUneBase<Optimisations> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        struct P {
            const char* cip;
            const char* nom;
            const char* prix = "0000200";
            float ml = 60;
            int unite1 = Ml;
            float rapport1 = 1;
            int unite2 = 0;
            float rapport2 = 0;
            int drapeaux = 0;
            const char* suppression = "";
            const char* dosage = "250 mg/5 ml";
            const char* forme = "SB01";
        };
        const P sirops[] = {
            {"3200001", "SIROP A", "0000200", 60, Ml, 1, Cuillere, 5},
            {"3200002", "SIROP B", "0000300", 120},
            {"3200003", "SIROP C", "0000200", 60, Cuillere, 5},
            {"3200004", "SIROP D", "0000100", 100, Ml, 1, Cuillere, 2.5},
            {"3200005", "SIROP L", "0000000"},
            {"3200006", "SIROP F", nullptr},
            {"3200007", "SIROP H", "0000010", 60, Ml, 1, 0, 0, VDXPRO::Hospitalier},
            {"3200008", "SIROP S", "0000010", 60, Ml, 1, 0, 0, 0, "A01012020"},
            {"3200010", "SIROP G", "0000010", 60, Ml, 1, 0, 0, 0, "", "500 mg/5 ml"},
            {"3200011", "SIROP K", "0000010", 60, Ml, 1, 0, 0, 0, "", "250 mg/5 ml", "CP01"},
            {"3200012", "SIROP P", "12"},
            {"3200013", "SIROP Q", "0000250"},
            {"3200014", "SIROP R", "0000200", 60, Ml, 0},
        };
        for (const P& p : sirops) {
            if (p.prix)
                b.Ajoute("VDXPRO", {{"CodeCIP", p.cip}, {"Libelle", p.nom}, {"DonneeEco2", p.prix}, {"CodeTSS", "2"},
                                    {"CodeLaboratoire", "SANO"}, {"Drapeaux", p.drapeaux},
                                    {"Suppression", p.suppression}});
            b.Ajoute("VDXIDPRO", {{"CodeCIP", p.cip}, {"Denomination", p.nom}, {"Dosage", p.dosage},
                                  {"CodeForme", p.forme}, {"CodePresentation", 25}, {"QuantitePresentation", 1},
                                  {"CodeUnitePresentation", Ml}, {"QuantiteUnitePresentation", p.ml},
                                  {"CodeUnitePrise", p.unite1}, {"AvecContenance", 1}, {"Rapport", p.rapport1},
                                  {"CodeUnitePrise2", p.unite2}, {"AvecContenance2", 1}, {"Rapport2", p.rapport2}});
            b.Ajoute("VDXCLAP", {{"CodeClasse", "C1"}, {"CodeCIP", p.cip}});
        }
        b.Ajoute("VDXCLAP", {{"CodeClasse", "C1"}, {"CodeCIP", "3200009"}});
        for (const char* cip : {"3200001", "3200002"}) {
            b.Ajoute("VDXCLAP", {{"CodeClasse", "C2"}, {"CodeCIP", cip}});
            b.Ajoute("VDXCLAP", {{"CodeClasse", "X1"}, {"CodeCIP", cip}});
        }

        // Tablets of 30 in boxes (code 1), of an unknown package (7), or
        // of none.
        struct T {
            const char* cip;
            const char* nom;
            const char* prix;
            int contenant = 1;
            float nombre = 30;
        };
        for (const T& t : {T{"3300001", "COMPRIME A", "0000500"}, T{"3300002", "COMPRIME B", "0000000"},
                           T{"3300003", "COMPRIME C", "0000300"}, T{"3300004", "COMPRIME D", "0000400", 7},
                           T{"3300005", "COMPRIME F", "0000400", 0}, T{"3300006", "COMPRIME A", "0001200", 1, 90},
                           T{"3300007", "COMPRIME Z", "0000100"}}) {
            b.Ajoute("VDXPRO", {{"CodeCIP", t.cip}, {"Libelle", t.nom}, {"DonneeEco2", t.prix}});
            b.Ajoute("VDXIDPRO", {{"CodeCIP", t.cip}, {"Denomination", t.nom}, {"Dosage", "10 mg"},
                                  {"CodeForme", "CP01"}, {"CodePresentation", Comprime},
                                  {"QuantitePresentation", t.nombre}, {"CodeUnitePresentation", Comprime},
                                  {"QuantiteUnitePresentation", 1}, {"CodeContenant", t.contenant},
                                  {"CodeUnitePrise", Comprime}, {"AvecContenance", 1}, {"Rapport", 1}});
            if (std::string_view(t.cip) < "3300006") b.Ajoute("VDXCLAP", {{"CodeClasse", "T1"}, {"CodeCIP", t.cip}});
        }
        for (const char* cip : {"3300001", "3300006", "3300007"}) b.Ajoute("VDXCLAP", {{"CodeClasse", "Z1"}, {"CodeCIP", cip}});

        for (auto [cip, nom] : {std::pair{"3400001", "MUCO Ad E"}, {"3400002", "MUCO E"}, {"3400003", "MUCO Ad"},
                                {"3400004", "MUCO N"}, {"3400005", "MUCO Bébé"}, {"3400006", "MUCO e"}}) {
            b.Ajoute("VDXPRO", {{"CodeCIP", cip}, {"Libelle", nom}, {"DonneeEco2", "0000100"}});
            b.Ajoute("VDXIDPRO", {{"CodeCIP", cip}, {"Denomination", nom}, {"CodeForme", "SB01"}});
            b.Ajoute("VDXCLAP", {{"CodeClasse", "V1"}, {"CodeCIP", cip}});
        }

        // Without class, another product's keys behind it; without class nor
        // any key behind it.
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3000010"}, {"Denomination", "PARACETAMOL GNR"}});
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3900000"}, {"Denomination", "DERNIER"}});
        b.Ajoute("VDXPRO", {{"CodeCIP", "3900000"}, {"Libelle", "DERNIER"}});

        b.Ajoute("VDXIDPRE", {{"Code", 25}, {"Libelle", "flacon"}, {"LibellePluriel", "flacons"}});
        b.Ajoute("VDXIDPRE", {{"Code", Comprime}, {"Libelle", "comprimé"}, {"LibellePluriel", "comprimés"}});
        b.Ajoute("VDXIDUPR", {{"Code", Ml}, {"Libelle", "ml"}, {"LibellePluriel", "ml"}});
        b.Ajoute("VDXIDCON", {{"Code", 1}, {"Libelle", "boîte"}, {"LibellePluriel", "boîtes"}});
        b.Ajoute("VDXIDFOR", {{"CodeForme", "SB01"}, {"Libelle", "sirop"}, {"LibelleCle", "SIROP"}});
        b.Ajoute("VDXTSS", {{"Code", "2"}, {"Taux", 65.0}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "C1"}, {"Libelle", "Sirops"}, {"LibelleCle", "SIROPS"}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "X1"}, {"Libelle", "Divers"}, {"LibelleCle", "DIVERS*"}});
    }

    // The rows of the flat text as "code:Rang:packages" (fields 6, 1, 2),
    // or with another field as a fourth.
    static std::string Rangs(int quatrieme = -1) {
        std::string rangs, ligne;
        std::istringstream lignes(Memoire());
        while (std::getline(lignes, ligne)) {
            if (!ligne.empty() && ligne.back() == '\r') ligne.pop_back();
            std::vector<std::string> champs;
            std::istringstream f(ligne);
            for (std::string c; std::getline(f, c, '@');) champs.push_back(c);
            champs.resize(10);
            rangs += champs[5] + ":" + champs[0] + ":" + champs[1];
            if (quatrieme >= 0) rangs += ":" + champs[static_cast<size_t>(quatrieme)];
            rangs += " ";
        }
        return rangs;
    }
    static int32_t Optimise(const char* cip, int32_t boites, int32_t unite, float quantite, int32_t limite = -1) {
        return Optimisation_Vdx(cip, boites, unite, quantite, nullptr, limite);
    }
};

TEST_F(Optimisations, TwoPackagesCompareOnContentsAndTheExchangeOfUnitsStays) {
    // 120 ml or 24 spoons, 2 bottles at 200. B holds 120 ml: 1. C counts in
    // spoons only: the spoons replace the ml, 2. D then stays in spoons (24
    // of 40), where in ml it would take 2. L, in ml only, turns back to ml.
    // The rows by Rang, then cost, C1 and C2 together.
    // R, without contents, takes the prescription's 2.
    const std::string rangs = "3200004:0:1 3200002:0:1 3200002:0:1 3200003:1:2 3200014:1:2 3200013:2:2 3200005:3:2 "
                              "3200006:3:2 3200012:3:2 ";
    ASSERT_EQ(Optimise("3200001", 2, 0, 0), 9);
    EXPECT_EQ(Rangs(), rangs);
    ASSERT_EQ(Optimise("3200001", 0, Ml, 120), 9);
    EXPECT_EQ(Rangs(), rangs);
    // 24 spoons are 120 ml: B, in ml only, takes them in ml.
    ASSERT_EQ(Optimise("3200001", 0, Cuillere, 24), 9);
    EXPECT_EQ(Rangs(), rangs);
    // 25 spoons are 125 ml: 2 of B's bottles, as dear as 3 of A's.
    ASSERT_EQ(Optimise("3200001", 0, Cuillere, 25), 9);
    EXPECT_EQ(Rangs().substr(0, 24), "3200004:0:1 3200002:1:2 ");
    // A unit that is none of the product's: 1 package everywhere, the
    // reference 200.
    ASSERT_EQ(Optimise("3200001", 0, Comprime, 10), 9);
    EXPECT_EQ(Rangs(), "3200004:0:1 3200003:1:1 3200014:1:1 3200013:2:1 3200002:2:1 3200002:2:1 3200005:3:1 "
                       "3200006:3:1 3200012:3:1 ");
    // A quantity without unit: 3 packages, 180 ml, B's 1.5 bottle is 2;
    // equal costs keep the walk's order.
    ASSERT_EQ(Optimise("3200001", 3, 0, 7), 9);
    EXPECT_EQ(Rangs(), "3200004:0:1 3200002:1:2 3200003:1:3 3200014:1:3 3200002:1:2 3200013:2:3 3200005:3:3 "
                       "3200006:3:3 3200012:3:3 ");
}

TEST_F(Optimisations, RowsCarryTheirClassWordsRateAndLaboratory) {
    ASSERT_EQ(Optimise("3200001", 2, 0, 0, 1), 2);  // one row a class
    EXPECT_EQ(Memoire(),
              "0@1@65@C1@Sirops@3200002@SIROP B 250 mg/5 ml, sirop, 1 flacon de 120 ml@0000300@flacon@"
              "Sanofi Aventis France\r\n"
              "0@1@65@C2@Libell\xE9 inconnu@3200002@SIROP B 250 mg/5 ml, sirop, 1 flacon de 120 ml@0000300@flacon@"
              "Sanofi Aventis France");
    ASSERT_EQ(Optimise("3200001", 2, 0, 0), 9);
    // The plural above one package; no product record: rate 0, no laboratory.
    EXPECT_NE(Memoire().find("3@2@0@C1@Sirops@3200006@SIROP F 250 mg/5 ml, sirop, 1 flacon de 60 ml@0000000@flacons@\r"),
              std::string::npos);
    EXPECT_EQ(Optimise("3200001", 2, 0, 0, 0), 0);
    EXPECT_EQ(Optimise("3200001", 2, 0, 0, -2), 0);
    // Hospital products stay out whatever the session shows.
    ActiveHospitaliers_Vdx(1);
    EXPECT_EQ(Optimise("3200001", 2, 0, 0), 9);
}

TEST_F(Optimisations, CostsOfEqualRangAndProductsWithoutPrice) {
    // C 300, D and F 400 the same, B without price; D's unknown package
    // code and F's lack of one give the presentation's word. Z1 keeps the
    // box of 90 of the same name, dearer, and not COMPRIME Z.
    ASSERT_EQ(Optimise("3300001", 1, 0, 0), 5);
    EXPECT_EQ(Rangs(8), "3300003:0:1:bo\xEEte 3300004:0:1:comprim\xE9 3300005:0:1:comprim\xE9 3300006:2:1:bo\xEEte "
                        "3300002:3:1:bo\xEEte ");
    // A prescription without price: Rang 4 and the walk's order.
    ASSERT_EQ(Optimise("3300002", 0, Comprime, 61), 4);
    EXPECT_EQ(Rangs(8), "3300001:4:3:bo\xEEtes 3300003:4:3:bo\xEEtes 3300004:4:3:comprim\xE9s 3300005:4:3:comprim\xE9s ");
    ASSERT_EQ(Optimise("3300006", 0, Comprime, 90), 1);
    EXPECT_EQ(Rangs(3), "3300001:2:3:Z1 ");
    EXPECT_EQ(Optimise("3300007", 3, 0, 0), 0);
}

TEST_F(Optimisations, AgeFlagsOfTheNames) {
    // " Ad E" against " E": the candidate's " E" takes the prescription's
    // flags with 2, so a syrup for children stands for one for both.
    ASSERT_EQ(Optimise("3400001", 1, 0, 0), 1);
    EXPECT_EQ(Rangs(), "3400002:1:1 ");
    // Not the other way: " Ad" alone is 1, and " E" gives 1 | 2.
    EXPECT_EQ(Optimise("3400003", 1, 0, 0), 0);
    // "Bébé" is " N"; a lower-case " e" is nothing.
    ASSERT_EQ(Optimise("3400004", 1, 0, 0), 1);
    EXPECT_EQ(Rangs(), "3400005:1:1 ");
    EXPECT_EQ(Optimise("3400006", 1, 0, 0), 0);
}

TEST_F(Optimisations, BadInputInTheOrderOfItsChecks) {
    EXPECT_EQ(Optimise(nullptr, 1, 0, 0), -10);
    EXPECT_EQ(Optimise("", 1, 0, 0), -10);
    EXPECT_EQ(Optimise("320000", 1, 0, 0), -13);
    EXPECT_EQ(Optimise("3400930000011", 1, 0, 0), -13);  // 13 digits without CIP13Actif
    for (auto [boites, unite, quantite] : {std::tuple{0, 0, 0.f}, {0, Ml, 0.f}, {-1, 0, 5.f}})
        EXPECT_EQ(Optimise("3200001", boites, unite, quantite), -20);
    EXPECT_EQ(Optimise("3200001", 1, -1, 5), -30);
    EXPECT_EQ(Optimise("3200001", 1, Ml, -5), -40);
    EXPECT_EQ(Optimise("3200009", 1, 0, 0), 0);   // no identification
    EXPECT_EQ(Optimise("3200006", 1, 0, 0), 0);   // no product record
    EXPECT_EQ(Optimise("3000010", 1, 0, 0), 0);   // no class, another product's keys follow
    EXPECT_EQ(Optimise("3900000", 1, 0, 0), -90); // no class key at or behind
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(Optimise("3400930000099", 1, 0, 0), -13);
    ASSERT_EQ(Optimise("3400930000011", 1, 0, 0), 0);  // mapped to 3000001, which has no identification
    ActiveCIP13_Vdx(0);
    ReconnecteEnTableau();
    EXPECT_EQ(Optimise("3200001", 0, 0, 0), -60);  // the array before the other arguments
    DeConnection2_Vdx();
    EXPECT_EQ(Optimise("320000", 1, 0, 0), -13);
    EXPECT_EQ(Optimise("3200001", 1, 0, 0), -2);
}

TEST_F(Optimisations, RowsIntoTheHostsArray) {
    ReconnecteEnTableau();
    SAFEARRAY* lignes = essai::TableauDeFiches(10);
    ASSERT_EQ(Optimisation_Vdx("3200001", 2, 0, 0, &lignes, -1), 9);
    const auto* l = static_cast<VdxOptimisation*>(lignes->pvData);
    EXPECT_EQ(l[0].Rang, 0);
    EXPECT_EQ(l[0].NombreBoites, 1);
    EXPECT_EQ(l[0].TauxRemboursement.Valeur, 65);
    EXPECT_EQ(essai::Texte(l[0].CodeCIP), "3200004");
    EXPECT_EQ(essai::Texte(l[3].Conditionnement), "flacons");
    EXPECT_EQ(essai::Texte(l[8].Prix), "0000000");  // "12" is no price
    VideTableau(lignes, GabaritDe<LigneOptimisation>());
    SafeArrayDestroy(lignes);
}

TEST_F(Optimisations, PackagesOfOneProductForAQuantity) {
    const auto boitage = [](const char* cip, int32_t unite, float quantite) {
        return Boitage_Vdx(cip, unite, quantite, nullptr);
    };
    // Q / 30 + 0.9999, truncated.
    for (auto [quantite, boites] : {std::pair{30.f, 1}, {30.0001f, 1}, {30.002f, 1}, {30.004f, 2}, {30.01f, 2},
                                    {61.f, 3}})
        EXPECT_EQ(boitage("3300001", Comprime, quantite), boites) << quantite;
    EXPECT_EQ(Memoire(), "bo\xEEtes");
    EXPECT_EQ(boitage("3300001", Comprime, 30), 1);
    EXPECT_EQ(Memoire(), "bo\xEEte");
    EXPECT_EQ(boitage("3300005", Comprime, 45), 2);  // no package code: the presentation's word
    EXPECT_EQ(Memoire(), "comprim\xE9s");
    EXPECT_EQ(boitage("3300004", Comprime, 45), 2);  // an unknown package code: no word
    EXPECT_EQ(Memoire(), "");
    EXPECT_EQ(boitage("3200001", Cuillere, 13), 2);  // the second unit
    EXPECT_EQ(boitage("3300001", Ml, 100), 1);       // not its unit
    EXPECT_EQ(boitage("3300001", 0, 10), -20);
    EXPECT_EQ(boitage("3300001", Comprime, 0.5f), -30);
    EXPECT_EQ(boitage("3999998", Comprime, 1), -90);
    EXPECT_EQ(boitage("33000011", Comprime, 1), -13);
    ReconnecteEnTableau();
    BSTR mot = nullptr;
    ASSERT_TRUE(hote::RangeOctets(&mot, "ancien"));
    EXPECT_EQ(Boitage_Vdx("", Comprime, 10, &mot), -10);
    EXPECT_EQ(essai::Texte(mot), "");  // emptied first
    EXPECT_EQ(Boitage_Vdx("3300001", Comprime, 45, nullptr), -2000);
    ASSERT_EQ(Boitage_Vdx("3300001", Comprime, 45, &mot), 2);
    EXPECT_EQ(essai::Texte(mot), "bo\xEEtes");
    hote::Libere(&mot);
}

}  // namespace
}  // namespace vdx
