// The advisories on one product: the heat-wave sentence (categories of one
// component, synonyms, routes, missing letters and labels), its codes and
// modes; the kosher rating and the products filed under it.
#include "checks/avis.h"

#include <gtest/gtest.h>

#include "session/cadre.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

constexpr int32_t Ibuprofene = 2092, SulfateMorphine = 1099, Morphine = 15686, Diclofenac = 37, SansCategorie = 9999;

void Remplit(BaseDeTest& b) {
    const auto produit = [&b](const char* cip, std::initializer_list<int32_t> substances, const char* voie) {
        int rang = 0;
        for (int32_t s : substances)
            b.Ajoute("VDXVCOMP", {{"CodeCIP", cip}, {"Rang", "00" + std::to_string(++rang)}, {"CodeSubstance", s},
                                  {"Quantite", 1.0}});
        b.Ajoute("VDXIDPVO", {{"CodeCIP", cip}, {"CodeVoie", voie}});
    };
    produit("3000001", {Ibuprofene, SulfateMorphine}, "A11");
    produit("3000002", {Diclofenac}, "B01");
    produit("3000003", {SansCategorie}, "A11");  // and no label
    b.Ajoute("VDXPRO", {{"CodeCIP", "3000001"}, {"Libelle", "IBUPROFENE 400MG CPR"}});
    b.Ajoute("VDXPRO", {{"CodeCIP", "3000002"}, {"Libelle", "DICLOFENAC GEL"}});
    for (auto [code, libelle] : {std::pair{Ibuprofene, "IBUPROFÈNE"}, {SulfateMorphine, "SULFATE DE MORPHINE"},
                                 {Morphine, "MORPHINE"}, {Diclofenac, "DICLOFÉNAC"}})
        b.Ajoute("VDXVPA", {{"CodeSubstance", code}, {"Libelle", libelle}});
    b.Ajoute("VDXWSYNC", {{"CodeSubstance", SulfateMorphine}, {"CodeSynonyme", Morphine}});

    for (auto [substance, lettre] : {std::pair{Ibuprofene, "R"}, {Ibuprofene, "D"}, {Morphine, "C"},
                                     {Diclofenac, "R"}, {SansCategorie, "Z"}})
        b.Ajoute("VDXYCACO", {{"CodeSubstance", substance}, {"LettreCanicule", lettre}});
    // Filed under ibuprofen's number, holding another: passed over.
    b.AjouteAvecCles("VDXYCACO", {{"CodeSubstance", 4242}, {"LettreCanicule", "X"}}, {{0, "02092X"}});
    for (auto [lettre, libelle] : {std::pair{"R", "Médicaments néphrotoxiques"}, {"D", "Diurétiques"},
                                   {"C", "Éléments altérant la thermorégulation"}, {"X", "Autres"}})
        b.Ajoute("VDXYCAAR", {{"LettreCanicule", lettre}, {"Libelle", libelle}});

    b.Ajoute("VDXPROA", {{"CodeCIP", "3000001"}, {"Mediel", 3}});
    b.Ajoute("VDXPROA", {{"CodeCIP", "3000002"}, {"Mediel", 0}});
}

class Avis : public essai::SurUneBase<Avis> {
public:
    static void Remplit(BaseDeTest& b) { vdx::Remplit(b); }
};

const std::string Tete = " est \xE0 prendre en consid\xE9ration en cas de vague de chaleur car comportant dans sa composition : ";

TEST_F(Avis, TheSentenceNamesEachComponentWithItsCategoriesAndTheSynonymsComponent) {
    ASSERT_EQ(IsCanicule_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "Le produit IBUPROFENE 400MG CPR" + Tete +
                             "\r\n - IBUPROF\xC8NE, appartenant \xE0 la cat\xE9gorie des diur\xE9tiques et des "
                             "m\xE9" "dicaments n\xE9phrotoxiques"
                             "\r\n - SULFATE DE MORPHINE, appartenant \xE0 la cat\xE9gorie des \xE9l\xE9ments "
                             "alt\xE9rant la thermor\xE9gulation");
}

TEST_F(Avis, ALocalRouteAMissingLetterAndAnUnknownLabel) {
    SetString_Vdx("avant");
    EXPECT_EQ(IsCanicule_Vdx("3000002", nullptr), 0);
    EXPECT_EQ(Memoire(), "avant");  // nothing delivered
    // A letter VDXYCAAR lacks leaves its line out; the product is concerned still.
    ASSERT_EQ(IsCanicule_Vdx("3000003", nullptr), 1);
    EXPECT_EQ(Memoire(), "Le produit  [ Libelle Inconnu ]" + Tete);
}

TEST_F(Avis, TheCodeIsCheckedBeforeTheConnectionAndTheSentenceGoesToTheHostString) {
    ReconnecteEnTableau();
    BSTR texte = nullptr;
    ASSERT_EQ(IsCanicule_Vdx("3000002", &texte), 0);
    EXPECT_EQ(essai::Texte(texte), "");
    ASSERT_EQ(IsCanicule_Vdx("3000001", &texte), 1);
    EXPECT_EQ(essai::Texte(texte).substr(0, 31), "Le produit IBUPROFENE 400MG CPR");
    DeConnection2_Vdx();
    EXPECT_EQ(IsCanicule_Vdx(nullptr, &texte), -10);
    EXPECT_EQ(IsCanicule_Vdx("300000", &texte), -13);
    EXPECT_EQ(IsCanicule_Vdx("3000001", &texte), -2);
    SysFreeString(texte);
}

TEST_F(Avis, TheKosherRatingItsTextsAndItsCodes) {
    ASSERT_EQ(IsMediel_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "3");
    EXPECT_EQ(IsMediel_Vdx("3000003", nullptr), -90);
    EXPECT_EQ(IsMediel_Vdx("300000", nullptr), -13);
    EXPECT_EQ(IsMediel_Vdx(nullptr, nullptr), -10);
    EXPECT_EQ(TexteMediel(1), "Casher pour P\xE2que");
    EXPECT_EQ(TexteMediel(7), "R\xE9" "f\xE9renc\xE9 pour information");
    EXPECT_EQ(TexteMediel(9), "Casher hors P\xE2que - lait non surveill\xE9");
    for (int32_t autre : {0, 10, -1}) EXPECT_EQ(TexteMediel(autre), "Aucune information MEDIEL disponible ") << autre;
    // Built from sources, no product is filed under "M".
    ASSERT_EQ(ProduitMediel_Vdx(nullptr), 0);
}

TEST(ProduitsMediel, TheProductsFiledUnderTheRatingsLetterAndOneWithoutComplement) {
    BaseDeTest base;
    essai::AjouteIdentite(base);
    base.Ajoute("VDXPRO", {{"CodeCIP", "3000001"}, {"Libelle", "IBUPROFENE 400MG CPR"}})
        .Ajoute("VDXPROA", {{"CodeCIP", "3000001"}, {"Mediel", 4}})
        .Ajoute("VDXVPRO", {{"Categorie", "M"}, {"Libelle", "IBUPROFENE 400MG CPR"}, {"CodeCIP", "3000001"}});
    DeConnection2_Vdx();
    ASSERT_EQ(Connection_Vdx(base.Repertoire().c_str(), ModeMemoire, 0), 1);
    ASSERT_EQ(ProduitMediel_Vdx(nullptr), 1);
    EXPECT_EQ(session().ChaineMemoire.value_or(""), "3000001@IBUPROFENE 400MG CPR@Tol\xE9r\xE9");
    DeConnection2_Vdx();
    base.Ajoute("VDXVPRO", {{"Categorie", "M"}, {"Libelle", "SANS COMPLEMENT"}, {"CodeCIP", "3000009"}});
    ASSERT_EQ(Connection_Vdx(base.Repertoire().c_str(), ModeMemoire, 0), 1);
    EXPECT_EQ(ProduitMediel_Vdx(nullptr), -90);
    DeConnection2_Vdx();
    RemetSession();
}

}  // namespace
}  // namespace vdx
