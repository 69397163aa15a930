// The texts of the marketing authorisation one by one: the terms of a
// product by kind, the stored chapters of both tables, the dates of the
// chapters, the labels of a speciality and of a line by common name.
#include "documents/textes_amm.h"

#include <gtest/gtest.h>

#include "session/valeurs_hote.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// 3000001: two indications (one VDXVAMM lacks), a contra-indication; the
// main texts with chapters 1 and 3 (chapter 2 empty), the further ones with
// chapter 13; the date of chapter 5 and of the authorisation. 3000002: no
// text at all.
class TextesAMM : public essai::SurUneBase<TextesAMM> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        for (auto [type, terme, niveau] :
             {std::tuple{"1", "IN00000002", 3}, {"1", "IN00000001", 0}, {"2", "CI00000001", 1}})
            b.Ajoute("VDXVAMPC", {{"CodeCIP", "3000001"}, {"TypeAMM", type}, {"CodeTerme", terme}, {"NiveauLien", niveau}});
        b.Ajoute("VDXVAMM", {{"CodeTerme", "IN00000001"}, {"TypeAMM", "1"}, {"Libelle", "Fièvre"}});
        b.Ajoute("VDXVAMM", {{"CodeTerme", "CI00000001"}, {"TypeAMM", "2"}, {"Libelle", "Grossesse"}});
        b.Ajoute("VDXVAMPT", {{"CodeCIP", "3000001"},
                              {"Texte1", "Fièvre"},
                              {"Rtf1", "{\\rtf1\\ansi Fi\\'e8vre\\par}"},
                              {"Rtf3", "{\\rtf1 Pr\\'e9cautions}"}});
        b.Ajoute("VDXVAMST", {{"CodeCIP", "3000001"}, {"Rtf13", "{\\rtf1 Bo\\'eete}"}});
        b.Ajoute("VDXVAMDT", {{"CodeCIP", "3000001"}, {"CodeChapitre", "05"}, {"DateChapitre", "2016/11/03"}});
        b.Ajoute("VDXVAMDT", {{"CodeCIP", "3000001"}, {"CodeChapitre", "00"}, {"DateChapitre", "1998-07-21"}});
        b.Ajoute("VDXYCIS", {{"CodeCIS", "60234100"}, {"Libelle", "DOLIPRANE 500 mg, comprimé"}});
    }
};

TEST_F(TextesAMM, TheTermsOfAKindInKeyOrderWithTheirLevel) {
    ASSERT_EQ(ProduitAMM_Vdx("3000001", nullptr, 1), 2);
    EXPECT_EQ(Memoire(), "0@IN00000001@Fi\xE8vre\r\n3@IN00000002@Mot Cl\xE9 IN00000002 inexistant.");
    EXPECT_EQ(ProduitAMM_Vdx("3000001", nullptr, 4), 0);
    EXPECT_EQ(ProduitAMM_Vdx("3000002", nullptr, 1), 0);
    for (int32_t type : {0, 5}) EXPECT_EQ(ProduitAMM_Vdx("3000001", nullptr, type), -30);
    EXPECT_EQ(ProduitAMM_Vdx("300000", nullptr, 1), -13);
    ReconnecteEnTableau();
    EXPECT_EQ(ProduitAMM_Vdx("3000001", nullptr, 2), -20);
    SAFEARRAY* termes = essai::TableauDeFiches(3);
    ASSERT_EQ(ProduitAMM_Vdx("3000001", &termes, 2), 1);
    const auto* t = static_cast<VdxTermeProduit*>(termes->pvData);
    EXPECT_EQ(t[0].NiveauLien, 1);
    EXPECT_EQ(essai::Texte(t[0].Libelle), "Grossesse");
    VideTableau(termes, GabaritDe<TermeProduit>());
    SafeArrayDestroy(termes);
}

TEST_F(TextesAMM, ChaptersOfBothTablesAsTextAndRtf) {
    ASSERT_EQ(ProduitTexteAMM_Vdx("3000001", nullptr, 1), 1);
    EXPECT_EQ(Memoire(), "Fi\xE8vre@{\\rtf1\\ansi Fi\\'e8vre\\par}");
    EXPECT_EQ(ProduitTexteAMM_Vdx("3000001", nullptr, 2), 0);
    EXPECT_EQ(Memoire(), "@");
    EXPECT_EQ(ProduitTexteAMM_Vdx("3000002", nullptr, 1), 0);
    ASSERT_EQ(ProduitTexteAMMPlus_Vdx("3000001", nullptr, 13), 1);
    EXPECT_EQ(Memoire(), "Bo\xEEte@{\\rtf1 Bo\\'eete}");
    for (int32_t chapitre : {0, 6}) EXPECT_EQ(ProduitTexteAMM_Vdx("3000001", nullptr, chapitre), -30);
    EXPECT_EQ(ProduitTexteAMMPlus_Vdx("3000001", nullptr, 14), -30);
    ReconnecteEnTableau();
    EXPECT_EQ(ProduitTexteAMM_Vdx("3000001", nullptr, 3), -20);
    FicheHote<VdxDeuxChaines> textes({TypeChamp::Texte, TypeChamp::Texte});
    ASSERT_EQ(ProduitTexteAMM_Vdx("3000001", textes.Adresse(), 1), 1);
    EXPECT_EQ(essai::Texte(textes->Code), "Fi\xE8vre");
    EXPECT_EQ(essai::Texte(textes->Libelle), "{\\rtf1\\ansi Fi\\'e8vre\\par}");
    ASSERT_EQ(ProduitTexteAMM_Vdx("3000001", textes.Adresse(), 2), 0);
    EXPECT_EQ(essai::Texte(textes->Code), "");
    EXPECT_EQ(essai::Texte(textes->Libelle), "");
}

TEST_F(TextesAMM, DatesOfChaptersAndLabels) {
    ASSERT_EQ(GetDateChapitre_Vdx("3000001", 5, nullptr), 1);
    EXPECT_EQ(Memoire(), "2016/11/03");
    ASSERT_EQ(GetDateChapitre_Vdx("3000001", 0, nullptr), 1);
    EXPECT_EQ(Memoire(), "1998-07-21");
    EXPECT_EQ(GetDateChapitre_Vdx("3000001", 6, nullptr), 0);
    EXPECT_EQ(GetDateChapitre_Vdx("3000001", 100, nullptr), -20);
    ASSERT_EQ(LibelleCIS_Vdx("60234100", nullptr), 1);
    EXPECT_EQ(Memoire(), "DOLIPRANE 500 mg, comprim\xE9");
    EXPECT_EQ(LibelleCIS_Vdx("6023410", nullptr), -13);
    EXPECT_EQ(LibelleCIS_Vdx("60234101", nullptr), -90);
    EXPECT_EQ(LibelleCIS_Vdx("", nullptr), -10);
    ASSERT_EQ(LibelleMedDC2_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "DOLIPRANE 500MG CPR");
    EXPECT_EQ(LibelleMedDC2_Vdx("3999998", nullptr), -90);
}

}  // namespace
}  // namespace vdx
