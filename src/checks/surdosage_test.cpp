// Redundancy: the same substance, synonyms and listed classes between the
// products of a prescription, the rule that keeps one row per shared
// substance, the routes that count, and the exports by mode.
#include "checks/surdosage.h"

#include <gtest/gtest.h>

#include "session/cadre.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {

namespace {

using essai::BaseDeTest;

constexpr int32_t Ibuprofene = 2092, Ketoprofene = 823, Paracetamol = 2202, SulfateMorphine = 1099,
                  ChlorhydrateMorphine = 585, Morphine = 15686;

struct Produit {
    const char* cip;
    const char* libelle;
    std::vector<std::pair<int32_t, float>> composants;  // a quantity of 0: none
    std::vector<const char*> voies;
    std::vector<const char*> classes;
};

void Remplit(BaseDeTest& b) {
    const Produit produits[] = {
        {"3000001", "IBUPROFENE A 400MG", {{Ibuprofene, 400}}, {"A11"}, {"M01AE01"}},
        {"3000002", "IBUPROFENE B 200MG", {{Ibuprofene, 200}}, {"A11", "A17"}, {"M01AE01"}},
        {"3000003", "KETOPROFENE 100MG", {{Ketoprofene, 100}}, {"A11"}, {"M01AE03"}},
        {"3000004", "IBUPROFENE GEL", {{Ibuprofene, 5}}, {"B01"}, {"M01AE01"}},
        {"3000005", "SKENAN 10MG", {{SulfateMorphine, 10}}, {"A11"}, {"N02AA01"}},
        {"3000006", "MORPHINE INJ 10MG", {{ChlorhydrateMorphine, 10}}, {"A21"}, {"N02AA01"}},
        {"3000007", "IBUPROFENE SANS DOSE", {{Ibuprofene, 0}}, {"A11"}, {}},
        {"3000008", "IBUPROFENE PARACETAMOL", {{Ibuprofene, 200}, {Paracetamol, 500}}, {"A11"}, {"X01AA"}},
        {"3000009", "PARACETAMOL IBUPROFENE", {{Paracetamol, 500}, {Ibuprofene, 200}}, {"A11"}, {"X01AA"}},
    };
    for (const Produit& p : produits) {
        b.Ajoute("VDXPRO", {{"CodeCIP", p.cip}, {"Libelle", p.libelle}});
        int rang = 0;
        for (auto [substance, quantite] : p.composants)
            b.Ajoute("VDXVCOMP", {{"CodeCIP", p.cip}, {"Rang", "00" + std::to_string(++rang)},
                                  {"CodeSubstance", substance}, {"Quantite", quantite}});
        for (const char* v : p.voies) b.Ajoute("VDXIDPVO", {{"CodeCIP", p.cip}, {"CodeVoie", v}});
        for (const char* c : p.classes) b.Ajoute("VDXCLAP", {{"CodeClasse", c}, {"CodeCIP", p.cip}});
    }
    for (auto [code, libelle] : {std::pair{Ibuprofene, "IBUPROFÈNE"}, {Ketoprofene, "KÉTOPROFÈNE"},
                                 {Paracetamol, "PARACÉTAMOL"}, {SulfateMorphine, "SULFATE DE MORPHINE"},
                                 {ChlorhydrateMorphine, "CHLORHYDRATE DE MORPHINE"}, {Morphine, "MORPHINE"}})
        b.Ajoute("VDXVPA", {{"CodeSubstance", code}, {"Libelle", libelle}});
    for (int32_t sel : {SulfateMorphine, ChlorhydrateMorphine})
        b.Ajoute("VDXWSYNC", {{"CodeSubstance", sel}, {"CodeSynonyme", Morphine}});
    for (auto [code, libelle] : {std::pair{"M01", "Anti-inflammatoires"}, {"N02", "Analgésiques"}})
        b.Ajoute("VDXCLA", {{"CodeClasse", code}, {"Libelle", libelle}, {"LibelleCle", libelle}});
    // Listed at three characters; X01 is not listed, and no key stands
    // above it. A class is found only below a key that stands above it.
    for (const char* code : {"M01", "N02", "N99"}) b.Ajoute("VDXCLAR", {{"CodeClasse", code}});
    b.Ajoute("VDXCIP13", {{"CodeCIP", "3000001"}, {"CIP13", "3400930000011"}});
}

class Surdosage : public essai::SurUneBase<Surdosage> {
public:
    static void Remplit(BaseDeTest& b) { vdx::Remplit(b); }

protected:
    // The rows for the codes, in memory mode, as "type:cip1/cip2:fields 4 to 11" lines.
    static std::string Rangs(const std::string& codes, int32_t attendu) {
        SetString_Vdx((codes + "\r\n\r\n").c_str());
        EXPECT_EQ(Surdosage_Vdx(nullptr, nullptr), attendu) << codes;
        if (attendu <= 0) return "";
        std::string texte;
        const std::string memoire = Memoire() + "\r\n";
        for (size_t debut = 0; debut < memoire.size();) {
            const size_t fin = memoire.find("\r\n", debut);
            std::vector<std::string> champs;
            for (size_t d = debut; d <= fin;) {
                size_t f = memoire.find('@', d);
                if (f == std::string::npos || f > fin) f = fin;
                champs.push_back(memoire.substr(d, f - d));
                d = f + 1;
            }
            texte += champs.at(12) + ":" + champs[0] + "/" + champs[1] + ":";
            for (size_t c = 4; c < 12; ++c) texte += champs[c] + (c < 11 ? "|" : "");
            texte += "\n";
            debut = fin + 2;
        }
        return texte;
    }
};

TEST_F(Surdosage, OneProductGivesNothingASharedSubstanceOneRowAndNoClassBesideIt) {
    EXPECT_EQ(Rangs("3000001", 0), "");
    EXPECT_EQ(Rangs("3000001@3000002", 1), "3:3000001/3000002:||||2092|IBUPROF\xC8NE||\n");
    EXPECT_EQ(Memoire(), "3000001@3000002@IBUPROFENE A 400MG@IBUPROFENE B 200MG@@@@@2092@IBUPROF\xC8NE@@@3");
    // Two substances shared: a row each.
    EXPECT_EQ(Rangs("3000008@3000009", 2),
              "3:3000008/3000009:||||2092|IBUPROF\xC8NE||\n3:3000008/3000009:||||2202|PARAC\xC9TAMOL||\n");
}

TEST_F(Surdosage, ClassesShareTheLongestListedClassAndOnlyAListedOne) {
    // M01AE01 and M01AE03 share M01AE0: listed at M01.
    EXPECT_EQ(Rangs("3000001@3000003", 1), "4:3000001/3000003:||||||M01|Anti-inflammatoires\n");
    // X01AA: no listed class; nothing at or above it leaves -90 behind.
    EXPECT_EQ(Rangs("3000008@3000003", 0), "");
    EXPECT_EQ(ClasseCommune("X01AA", "X01AB"), "");
    EXPECT_EQ(ClasseCommune("M01AE01", "M01AE03"), "M01");
    EXPECT_EQ(ClasseCommune("M01AE01", "N02"), "");
    EXPECT_EQ(ClasseCommune("M01AE01ABCDEF", "M01AE01ABCDEG"), "M01");  // ten characters compared
}

TEST_F(Surdosage, SaltsOfOneBaseGiveASynonymRowAndTheirClassRowStaysBesideIt) {
    EXPECT_EQ(Rangs("3000005@3000006", 2),
              "2:3000005/3000006:1099|585|SULFATE DE MORPHINE|CHLORHYDRATE DE MORPHINE|15686|MORPHINE||\n"
              "4:3000005/3000006:||||||N02|Analg\xE9siques\n");
}

TEST_F(Surdosage, OnlyComponentsWithAQuantityOfARouteOfTheWholeBodyAreCompared) {
    // The gel's route is local: its class alone counts.
    EXPECT_EQ(Rangs("3000001@3000004", 1), "4:3000001/3000004:||||||M01|Anti-inflammatoires\n");
    EXPECT_EQ(Rangs("3000001@3000007", 0), "");
}

TEST_F(Surdosage, TheExportsByModeAndTheirCodes) {
    EXPECT_EQ(SurdosageTest_Vdx(nullptr), -12);  // nothing stored
    // The substance of the first two; their class with the third.
    SetString_Vdx("3000001@3000002@3000003\r\n\r\n");
    EXPECT_EQ(SurdosageTest_Vdx(nullptr), 3);
    SetString_Vdx("\r\n");
    EXPECT_EQ(Surdosage_Vdx(nullptr, nullptr), 0);

    ReconnecteEnTableau();
    session().CIP13Actif = 1;
    SAFEARRAY* produits = essai::TableauDeChaines({"3400930000011", "3000002"});
    SAFEARRAY* fiches = essai::TableauDeFiches(13);
    ASSERT_EQ(Surdosage_Vdx(&produits, &fiches), 1);
    const auto* f = static_cast<VdxFicheSurdosage*>(fiches->pvData);
    EXPECT_EQ(essai::Texte(f[0].CIP1), "3000001");
    EXPECT_EQ(f[0].TypeRedondance, 3);
    EXPECT_EQ(SurdosageTest_Vdx(&produits), 1);
    SAFEARRAY* nul = nullptr;
    EXPECT_EQ(Surdosage_Vdx(&nul, &fiches), -10);
    EXPECT_EQ(Surdosage_Vdx(&produits, &nul), -20);
    SAFEARRAY* treize = essai::TableauDeChaines({"3400930999999"});
    EXPECT_EQ(Surdosage_Vdx(&treize, &fiches), -13);
    SAFEARRAY* vide = essai::TableauDeChaines({});
    EXPECT_EQ(Surdosage_Vdx(&vide, &fiches), 0);
    SAFEARRAY* trou = essai::TableauDeChaines({"3000001", "", "3000002"});
    EXPECT_EQ(Surdosage_Vdx(&trou, &fiches), -12);
    Gabarit gabarit(12, TypeChamp::Texte);
    gabarit.push_back(TypeChamp::Entier);
    VideTableau(fiches, gabarit);
    for (SAFEARRAY* t : {produits, fiches, treize, vide, trou}) SafeArrayDestroy(t);
    DeConnection2_Vdx();
    EXPECT_EQ(Surdosage_Vdx(nullptr, nullptr), -2);
}

}  // namespace
}  // namespace vdx
