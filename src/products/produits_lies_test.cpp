// The products of a vocabulary code: a class with its sub-classes, a form
// by prefix, a family by its whole code; each product once, shown as the
// lists of products show it, sorted by label.
#include "products/produits_lies.h"

#include <gtest/gtest.h>

#include "tests/support/essai_produits.h"
#include "tests/support/quatre_modes.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// Class M01 holds 3000010 and, through its sub-classes, 3000001 (twice),
// the hospital 3000005 and the deleted 3000004; M02 is a neighbour. A
// product the master table lacks is filed under M01AE too.
class ProduitsLiesTest : public essai::SurUneBase<ProduitsLiesTest> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        for (auto [classe, cip] : {std::pair{"M01", "3000010"}, {"M01AB", "3000001"}, {"M01AE", "3000001"},
                                   {"M01AE", "3000005"}, {"M01AE01", "3000004"}, {"M01AE01", "3999998"},
                                   {"M02", "3000007"}})
            b.Ajoute("VDXCLAP", {{"CodeClasse", classe}, {"CodeCIP", cip}});
        for (auto [forme, cip] : {std::pair{"CP00", "3000001"}, {"CP01", "3000002"}, {"GEL0", "3000007"}})
            b.Ajoute("VDXIDFOP", {{"CodeForme", forme}, {"CodeCIP", cip}});
        for (auto [famille, cip] : {std::pair{"00010", "3000001"}, {"00011", "3000002"}})
            b.Ajoute("VDXFAMP", {{"CodeFamille", famille}, {"CodeCIP", cip}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "M01"}, {"Libelle", "AINS"}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "M01AB"}, {"Libelle", "AINS acétiques"}});
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3000001"}, {"Dosage", "500 mg"}, {"CodeForme", "CP00"}});
        b.Ajoute("VDXIDFOR", {{"CodeForme", "CP00"}, {"Libelle", "comprimé"}});
        b.Ajoute("VDXYDCIP", {{"CodeDCI", "9000001"}, {"CodeCIP", "3000001"}});
    }
};

TEST_F(ProduitsLiesTest, AClassTakesItsSubClassesEachProductOnce) {
    ASSERT_EQ(RechercheClasse_Vdx("M01", nullptr), 3);
    EXPECT_EQ(Memoire(), "3999998@CIP : 3999998 inexistant@M01AE01\r\n3000001@DOLIPRANE 500MG CPR@M01AB\r\n"
                         "3000010@PARACETAMOL GNR 500MG@M01");
    ActiveHospitaliers_Vdx(1);
    ASSERT_EQ(RechercheClasse_Vdx("M01AE", nullptr), 3);
    EXPECT_NE(Memoire().find("3000005@DOLIHOSP 1G INJ@M01AE\r\n"), std::string::npos);
    EXPECT_EQ(RechercheClasse_Vdx("M03", nullptr), 0);
}

TEST_F(ProduitsLiesTest, AFormByPrefixAFamilyByItsWholeCode) {
    ASSERT_EQ(RechercheForme_Vdx("CP", nullptr), 2);
    EXPECT_EQ(Memoire(), "3000002@DOLIPRANE 1000MG CPR@CP01\r\n3000001@DOLIPRANE 500MG CPR@CP00");
    ASSERT_EQ(RechercheFamille_Vdx("00010", nullptr), 1);
    EXPECT_EQ(Memoire(), "3000001@DOLIPRANE 500MG CPR@00010");
    EXPECT_EQ(RechercheFamille_Vdx("0001", nullptr), 0);
}

// The detail of each product: its class's label, economics, identification
// and line, each missing one told as such.
TEST_F(ProduitsLiesTest, TheProductsOfAClassWithTheirDetail) {
    ASSERT_EQ(ClasseProduits95_Vdx("M01AB", nullptr), 1);
    EXPECT_EQ(Memoire(), "3000001@DOLIPRANE 500MG CPR@M01AB@AINS ac\xE9tiques@Sanofi Aventis France@0000000@0@0@"
                         "comprim\xE9@500 mg@9000001");
    ASSERT_EQ(ClasseProduits95_Vdx("M01", nullptr), 3);
    EXPECT_NE(Memoire().find("3999998@CIP : 3999998 inexistant@M01AE01@Libell\xE9 inconnu@@0000000@0@0@@@\r\n"),
              std::string::npos);
    EXPECT_TRUE(Memoire().ends_with("3000010@PARACETAMOL GNR 500MG@M01@AINS@Sanofi Aventis France@0000000@0@1@@@")) << Memoire();
}

TEST_F(ProduitsLiesTest, TheFlatModesGiveTheSameRows) {
    for (auto* recherche : {RechercheClasse_Vdx, ClasseProduits95_Vdx})
        essai::MemeTexteDansLesModes(base_->Repertoire(), [&] { return recherche("M01", nullptr); }, 3);
}

TEST_F(ProduitsLiesTest, BadCodes) {
    for (auto* recherche : {RechercheClasse_Vdx, RechercheForme_Vdx, RechercheFamille_Vdx, ClasseProduits95_Vdx}) {
        EXPECT_EQ(recherche(nullptr, nullptr), VDX_ARGUMENT1);
        EXPECT_EQ(recherche("", nullptr), VDX_ARGUMENT1);
        EXPECT_EQ(recherche("ABCDEFGH", nullptr), VDX_CODE_MAL_FORME);
    }
    ReconnecteEnTableau();
    EXPECT_EQ(RechercheClasse_Vdx("M01", nullptr), VDX_ARGUMENT2);
}

}  // namespace
}  // namespace vdx
