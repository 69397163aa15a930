// The products of a substance (PAProduits_Vdx, ExcipientProduits_Vdx), the
// labels of substances and excipients, and the synonyms of a component.
#include "products/substances.h"

#include <gtest/gtest.h>

#include "tests/support/composition_essai.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using essai::Texte;

class Substances : public essai::SurUneBase<Substances> {
public:
    static void Remplit(BaseDeTest& b) { essai::RemplitComposition(b); }

protected:
    // The flat text of a call in memory mode, or its code when it is not
    // above 0.
    template <class F>
    static std::string Plat(F appel) {
        const int32_t n = appel();
        return n > 0 ? Memoire() : std::to_string(n);
    }
    static std::string PA(int32_t code) {
        return Plat([&] { return PAProduits_Vdx(code, nullptr); });
    }
    static std::string Excipient(int32_t code) {
        return Plat([&] { return ExcipientProduits_Vdx(code, nullptr); });
    }
    static std::string Libelle(int32_t (*f)(int32_t, BSTR*), int32_t code) {
        return Plat([&] { return f(code, nullptr); });
    }
    void Connecte(BaseDeTest& base) {
        DeConnection2_Vdx();
        ASSERT_EQ(Connection_Vdx(base.Repertoire().c_str(), ModeMemoire, 0), 1);
    }
};

const char* const ProduitsParacetamol =
    "3111111@CIP : 3111111 inexistant@PA\r\n"
    "3000015@DOLIKO 100MG BUV@PA\r\n"          // through the synonym 2203
    "3000002@DOLIPRANE 1000MG CPR@EXC\r\n"
    "3000001@DOLIPRANE 500MG CPR@PA\r\n"       // also an excipient there
    "3000003@DOLIPRANE 500MG CPR.@PA\r\n"
    "3000010@PARACETAMOL GNR 500MG@PA\r\n"
    "3000007@SKENAN LP 10MG GELULE@PA";       // through the concept 35000

TEST_F(Substances, ProductsComeThroughSynonymsAndConceptsOnceEachSortedByLabel) {
    EXPECT_EQ(PA(2202), ProduitsParacetamol);
    // The two exports are one search.
    EXPECT_EQ(Excipient(2202), ProduitsParacetamol);
    EXPECT_EQ(Excipient(7001), "3000002@DOLIPRANE 1000MG CPR@EXC\r\n3000006@DOLIVET 50MG@EXC");
}

TEST_F(Substances, HospitalProductsShowOnlyWhenAskedLinesByCommonNameAndDeletedOnesNever) {
    ActiveHospitaliers_Vdx(1);
    const std::string texte = PA(2202);
    EXPECT_NE(texte.find("3000005@DOLIHOSP 1G INJ@PA\r\n"), std::string::npos);
    EXPECT_EQ(texte.find("3000004"), std::string::npos);
    EXPECT_EQ(texte.find("9000001"), std::string::npos);
    ActiveHospitaliers_Vdx(0);
    EXPECT_EQ(PA(2202), ProduitsParacetamol);
}

TEST_F(Substances, ConceptsAreWalkedThroughTheirComponentsAndCodesAreBounded) {
    EXPECT_EQ(PA(30000), "3000008@MORPHINE 0,5MG/1ML@PA");     // still a substance
    EXPECT_EQ(PA(30001), "3000007@SKENAN LP 10MG GELULE@PA");  // not its own key, 3000009
    EXPECT_EQ(PA(35000), "3000007@SKENAN LP 10MG GELULE@PA");
    EXPECT_EQ(PA(99999), "3000015@DOLIKO 100MG BUV@PA");     // the highest concept
    EXPECT_EQ(PA(100000), "-10");
    EXPECT_EQ(PA(-1), "-10");
    EXPECT_EQ(Excipient(100000), "-10");
    EXPECT_EQ(PA(0), "0");
    EXPECT_EQ(Memoire(), "");
    DeConnection2_Vdx();
    EXPECT_EQ(PA(2202), "-2");
}

TEST_F(Substances, ASubstanceAboveEveryActiveKeyIsNotLookedForAmongExcipients) {
    BaseDeTest petite;
    essai::AjouteIdentite(petite);
    essai::RemplitProduits(petite);
    petite.Ajoute("VDXVPAP", {{"CodeSubstance", "00100"}, {"CodeCIP", "3000001"}})
        .Ajoute("VDXVEXCP", {{"CodeSubstance", "00050"}, {"CodeCIP", "3000003"}})
        .Ajoute("VDXVEXCP", {{"CodeSubstance", "00200"}, {"CodeCIP", "3000002"}});
    Connecte(petite);
    EXPECT_EQ(Excipient(50), "3000003@DOLIPRANE 500MG CPR.@EXC");
    EXPECT_EQ(Excipient(200), "0");
}

TEST_F(Substances, LabelsOfSubstancesExcipientsAndSynonyms) {
    EXPECT_EQ(Libelle(LibellePA_Vdx, 2202), "PARAC\xC9TAMOL");
    EXPECT_EQ(Libelle(LibelleExcipient_Vdx, 7001), "LACTOSE");
    EXPECT_EQ(Libelle(LibelleExcipient_Vdx, 2202), "-90");
    EXPECT_EQ(Libelle(LibellePA_Vdx, 99999), "-90");
    EXPECT_EQ(Libelle(LibellePA_Vdx, 100000), "-10");
    EXPECT_EQ(Libelle(LibelleExcipient_Vdx, -1), "-10");
    // Synonyms are labelled as substances.
    EXPECT_EQ(Plat([] { return SynonymeComposant_Vdx(2202, nullptr); }),
              "2203@AC\xC9TAMINOPH\xC8NE\r\n35000@Code 35000 introuvable");
    EXPECT_EQ(Plat([] { return SynonymeComposant_Vdx(1099, nullptr); }), "0");
    EXPECT_EQ(Plat([] { return SynonymeComposant_Vdx(100000, nullptr); }), "-10");
}

}  // namespace
}  // namespace vdx
