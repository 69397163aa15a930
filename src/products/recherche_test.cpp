// The searches of products through their exports, on the small product
// base: pages of the step search and their continuation, what a page hides,
// the walk of a category, the doctor's products and the products of a
// status. Results are read as flat texts (memory mode).
#include "products/recherche.h"

#include <gtest/gtest.h>

#include "tests/support/essai_produits.h"
#include "session/resultat.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

class RechercheProduits : public essai::SurUneBase<RechercheProduits> {
public:
    static void Remplit(BaseDeTest& b) { essai::RemplitProduits(b); }

protected:
    // A page of RechercheProduitParPas_Vdx: the count, then the rows.
    static std::string Page(const char* texte, int32_t options, const char* suite, int32_t nombre) {
        SetString2_Vdx(nullptr);
        const int32_t n = RechercheProduitParPas_Vdx(texte, nullptr, options, suite, nombre);
        return std::to_string(n) + (n > 0 ? "|" + Memoire() : "");
    }
    static std::string Page2(const char* texte, int32_t options, const char* suite, int32_t nombre) {
        SetString2_Vdx(nullptr);
        const int32_t n = RechercheProduitParPas2_Vdx(texte, nullptr, options, suite, nombre);
        return std::to_string(n) + (n > 0 ? "|" + Memoire() : "");
    }
};

// ---- Step search ----

TEST_F(RechercheProduits, PagesFollowTheLabelKeyAndGoOnBehindSuite) {
    // DOLIHOSP, reserved to hospitals, is hidden and does not shorten the page.
    EXPECT_EQ(Page("doli", 0, nullptr, 2), "2|3000004@DOLIKO 100MG [SUP]@\r\n3000015@DOLIKO 100MG BUV@");
    EXPECT_EQ(Page("doli", 0, "DOLIKO 100MG BUV", 1), "1|3000002@DOLIPRANE 1000MG CPR@");
    EXPECT_EQ(Page("doli", 0, "DOLIPRANE 1000MG CPR", 2),
              "2|3000001@DOLIPRANE 500MG CPR@\r\n3000003@DOLIPRANE 500MG CPR.@");
    // Suite's final point is part of its key.
    EXPECT_EQ(Page("doli", 0, "DOLIPRANE 500MG CPR.", 2), "1|3000006@DOLIVET 50MG@");
    EXPECT_EQ(Page("doli", 0, "DOLIVET 50MG", 2), "0");
}

TEST_F(RechercheProduits, ASuiteMarkedDeletedStartsRightBehindItsProduct) {
    EXPECT_EQ(Page("DOLI", 0, "DOLIKO 100MG [SUP]", 1), "1|3000015@DOLIKO 100MG BUV@");
    // A Suite that is no longer there: the page starts at the next label.
    EXPECT_EQ(Page("DOLI", 0, "DOLIN", 1), "1|3000002@DOLIPRANE 1000MG CPR@");
}

TEST_F(RechercheProduits, ASuiteAtFullKeyLengthFindsItsPlace) {
    EXPECT_EQ(Page("VACCIN", 0, nullptr, 1), "1|3000013@" + essai::LibellePlein + "@");
    EXPECT_EQ(Page("VACCIN", 0, essai::LibellePlein.c_str(), 5), "1|3000014@" + essai::LibellePleinRaise + "@");
    EXPECT_EQ(Page("VACCIN", 0, essai::LibellePleinRaise.c_str(), 5), "0");
}

TEST_F(RechercheProduits, WordsMustOccurInTheLabel) {
    EXPECT_EQ(Page("DOLI@500", 0, nullptr, 10), "2|3000001@DOLIPRANE 500MG CPR@\r\n3000003@DOLIPRANE 500MG CPR.@");
    EXPECT_EQ(Page("@gelule", 0, nullptr, 10), "1|3000007@SKENAN LP 10MG GELULE@");
    EXPECT_EQ(Page("DOLI@1000@cpr", 0, nullptr, 10), "1|3000002@DOLIPRANE 1000MG CPR@");
    EXPECT_EQ(Page("DOLI@1000@GELULE", 0, nullptr, 10), "0");
}

TEST_F(RechercheProduits, AnEmptyPrefixWalksFromTheFirstKey) {
    EXPECT_EQ(Page("", 0, nullptr, 1), "1|2000012@ALCOOL 70@");
    EXPECT_EQ(Page(nullptr, 0, nullptr, 1), "1|2000012@ALCOOL 70@");
    EXPECT_EQ(Page("", 0, nullptr, 0), "0");
    EXPECT_EQ(Page("ZZZ", 0, nullptr, 5), "0");
}

TEST_F(RechercheProduits, OptionsHideCategory40AndDeletedProducts) {
    EXPECT_EQ(Page("DOLI", SansRubrique40 | SansSupprimes, nullptr, 10),
              "4|3000015@DOLIKO 100MG BUV@\r\n3000002@DOLIPRANE 1000MG CPR@\r\n3000001@DOLIPRANE 500MG CPR@\r\n"
              "3000003@DOLIPRANE 500MG CPR.@");
    EXPECT_EQ(Page("DOLI", 3, nullptr, 10), std::to_string(VDX_ARGUMENT3));
    EXPECT_EQ(Page("DOLI", BaseMedecin, nullptr, 10), std::to_string(VDX_MEDECIN_NON_CONNECTE));
}

TEST_F(RechercheProduits, HospitalProductsAreShownOnlyWhenAskedAndThenAllAre) {
    EXPECT_EQ(Page("DOLIH", 0, nullptr, 5), "0");
    ActiveHospitaliers_Vdx(1);
    EXPECT_EQ(Page("DOLIH", 0, nullptr, 5), "1|3000005@DOLIHOSP 1G INJ@");
    // Shown whatever the category test said.
    EXPECT_EQ(Page("DOLIV", SansRubrique40, nullptr, 5), "1|3000006@DOLIVET 50MG@");
    ActiveHospitaliers_Vdx(0);
    EXPECT_EQ(Page("DOLIV", SansRubrique40, nullptr, 5), "0");
}

TEST_F(RechercheProduits, CodesAreGivenInTheSessionsForm) {
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(Page("DOLIPRANE 5", 0, nullptr, 1), "1|3400930000011@DOLIPRANE 500MG CPR@");
}

TEST_F(RechercheProduits, ATextBeginningWithABlankLeavesTheArrayAlone) {
    DeConnection2_Vdx();
    ASSERT_EQ(Connection_Vdx(base_->Repertoire().c_str(), 0, 0), 1);
    SAFEARRAY* tableau = essai::TableauDeFiches(3);
    ASSERT_EQ(RechercheProduitParPas_Vdx("DOLIPRANE", &tableau, 0, nullptr, 1), 1);
    EXPECT_EQ(RechercheProduitParPas_Vdx(" DOLI", &tableau, 0, nullptr, 5), 0);
    EXPECT_EQ(tableau->rgsabound[0].cElements, 1u);
    EXPECT_EQ(RechercheProduitParPas2_Vdx(" DOLI", &tableau, 0, nullptr, 5), 0);
    EXPECT_EQ(tableau->rgsabound[0].cElements, 1u);
    EXPECT_EQ(RechercheProduitParPas_Vdx("DOLI", nullptr, 0, nullptr, 5), VDX_ARGUMENT2);
    SAFEARRAY* deux = essai::TableauDeFiches(2);
    EXPECT_EQ(RechercheProduitParPas_Vdx("DOLI", &deux, 0, nullptr, 5), VDX_ARGUMENT2);
    const Gabarit gabarit = {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};
    DetruitTableau(tableau, gabarit);
    SafeArrayDestroy(tableau);
    SafeArrayDestroy(deux);
}

// ---- Step search by category ----

TEST_F(RechercheProduits, TheCategoryWalkStaysInItsLetter) {
    EXPECT_EQ(Page2("", 1, nullptr, 10), "1|2000012@ALCOOL 70@");        // "A": a code beginning with 2
    EXPECT_EQ(Page2("", 16, nullptr, 10), "1|3000006@DOLIVET 50MG@");    // "V"
    EXPECT_EQ(Page2("", 4, nullptr, 10), "1|3000009@LISTEA 5MG@");       // "C"
    EXPECT_EQ(Page2("", 8, nullptr, 10), "1|3000010@PARACETAMOL GNR 500MG@");  // "D"
    EXPECT_EQ(Page2("", 32, nullptr, 10), "0");                           // "X": none
    EXPECT_EQ(Page2("", 2, nullptr, 10), "2|3000013@" + essai::LibellePlein + "@\r\n3000014@" +
                                            essai::LibellePleinRaise + "@");  // "T", labels as filed in VDXPRO
    EXPECT_EQ(Page2("", 64, nullptr, 20).substr(0, 3), "14|");          // "Z": every product
    for (int32_t options : {3, 128, 255}) EXPECT_EQ(Page2("", options, nullptr, 10), "-30") << options;
}

TEST_F(RechercheProduits, TheCategoryWalkPagesAndHidesDeletedProducts) {
    // "S": categories 10, 11, 30 of codes not beginning with 2; hospital products are not hidden here.
    EXPECT_EQ(Page2("DOLI", 0, nullptr, 2), "2|3000005@DOLIHOSP 1G INJ@\r\n3000004@DOLIKO 100MG [SUP]@");
    EXPECT_EQ(Page2("DOLI", 0, "DOLIKO 100MG [SUP]", 2),
              "2|3000015@DOLIKO 100MG BUV@\r\n3000002@DOLIPRANE 1000MG CPR@");
    EXPECT_EQ(Page2("DOLI", SansSupprimes, "DOLIHOSP 1G INJ", 1), "1|3000015@DOLIKO 100MG BUV@");
    EXPECT_EQ(Page2("DOLI", 0, "DOLIPRANE 500MG CPR.", 5), "0");  // DOLIVET is of "V"
    EXPECT_EQ(Page2("MORPH", 0, nullptr, 5), "1|3000008@MORPHINE 0,5MG/1ML@");
}

// ---- The doctor's products ----

class RechercheProduitsMedecin : public RechercheProduits {
protected:
    static void SetUpTestSuite() {
        RechercheProduits::SetUpTestSuite();
        medecin_ = new BaseDeTest(Emplacement::Medecin);
        medecin_->Ajoute("PRO", {{"CodeCIP", "3000001"}, {"Libelle", "DOLIPRANE 500MG CPR"},
                                 {"Commentaire", "Mon générique"}});
        medecin_->Ajoute("PRO", {{"CodeCIP", "3000004"}, {"Libelle", "DOLIKO 100MG"}});
        medecin_->Ajoute("PRO", {{"CodeCIP", "3000005"}, {"Libelle", "DOLIHOSP 1G INJ"}});
        medecin_->Ajoute("PRO", {{"CodeCIP", "3999998"}, {"Libelle", "DOLIMAISON"}, {"Commentaire", "Préparation"}});
        medecin_->Repertoire();
    }
    static void TearDownTestSuite() {
        delete medecin_;
        medecin_ = nullptr;
        RechercheProduits::TearDownTestSuite();
    }
    void SetUp() override {
        RechercheProduits::SetUp();
        // The fixture's directory has a long name, against the rule of the
        // connection: the session is told where the base is.
        session().CheminMedecin = medecin_->Repertoire() + "/";
        session().ConnecteMedecin = true;
    }
    static inline BaseDeTest* medecin_ = nullptr;
};

TEST_F(RechercheProduitsMedecin, WalksTheDoctorsProductsWithTheirState) {
    EXPECT_EQ(Page("DOLI", BaseMedecin, nullptr, 10),
              "3|3000004@DOLIKO 100MG [SUP]@\r\n3999998@DOLIMAISON@Pr\xE9paration\r\n"
              "3000001@DOLIPRANE 500MG CPR@Mon g\xE9n\xE9rique");
    EXPECT_EQ(Page("DOLI", BaseMedecin, "DOLIKO 100MG [SUP]", 1), "1|3999998@DOLIMAISON@Pr\xE9paration");
    EXPECT_EQ(Page("DOLI", BaseMedecin | SansSupprimes, nullptr, 1), "1|3999998@DOLIMAISON@Pr\xE9paration");
    ActiveHospitaliers_Vdx(1);
    EXPECT_EQ(Page("DOLIH", BaseMedecin, nullptr, 10), "1|3000005@DOLIHOSP 1G INJ@");
}

// ---- Products of a status ----

TEST_F(RechercheProduits, ProductsOfAStatusInCodeOrderWithTheirLabels) {
    EXPECT_EQ(RechercheProduitParStatut_Vdx(1, nullptr, nullptr, 0), 3);
    EXPECT_EQ(Memoire(), "3000001@DOLIPRANE 500MG CPR@\r\n3000002@DOLIPRANE 1000MG CPR@\r\n"
                         "3000007@SKENAN LP 10 (dix) MG GELULE@");
    EXPECT_EQ(RechercheProduitParStatut_Vdx(7, nullptr, nullptr, 0), 2);
    EXPECT_EQ(Memoire(), "3000009@LISTEA 5MG@\r\n3999999@Code 3999999 introuvable@");
    EXPECT_EQ(RechercheProduitParStatut_Vdx(42, nullptr, nullptr, 0), 0);
}

TEST_F(RechercheProduits, ProductsOfAStatusByPages) {
    EXPECT_EQ(RechercheProduitParStatut_Vdx(1, nullptr, "", 2), 2);
    EXPECT_EQ(Memoire(), "3000001@DOLIPRANE 500MG CPR@\r\n3000002@DOLIPRANE 1000MG CPR@");
    EXPECT_EQ(RechercheProduitParStatut_Vdx(1, nullptr, "3000002", 2), 1);
    EXPECT_EQ(Memoire(), "3000007@SKENAN LP 10 (dix) MG GELULE@");
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(RechercheProduitParStatut_Vdx(1, nullptr, "3400930000011", 1), 1);
    EXPECT_EQ(Memoire(), "3000002@DOLIPRANE 1000MG CPR@");
    EXPECT_EQ(RechercheProduitParStatut_Vdx(1, nullptr, "3000007", 5), 0);
}

}  // namespace
}  // namespace vdx
