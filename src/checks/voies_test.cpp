#include "checks/voies.h"

#include <gtest/gtest.h>

#include "session/cadre.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/fixture.h"

namespace vdx {
namespace {

class Voies : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        base_ = new essai::BaseDeTest;
        base_->Ajoute("VDXIDVOI", {{"CodeVoie", "ORAL"}, {"Libelle", "Voie orale"}})
            .Ajoute("VDXIDVOI", {{"CodeVoie", "IV"}, {"Libelle", "Voie intraveineuse"}})
            .Ajoute("VDXIDPVO", {{"CodeCIP", "3400001"}, {"CodeVoie", "ORAL"}})
            .Ajoute("VDXIDPVO", {{"CodeCIP", "3400001"}, {"CodeVoie", "RECT"}})
            .Ajoute("VDXIDPVO", {{"CodeCIP", "3400002"}, {"CodeVoie", "IV"}})
            .Ajoute("VDXWPEFI", {{"CodeParent", 100}, {"CodeEnfant", 120}})
            .Ajoute("VDXWPEFI", {{"CodeParent", 100}, {"CodeEnfant", 99999}})
            .Ajoute("VDXWPEFI", {{"CodeParent", 7}, {"CodeEnfant", 130}});
        base_->Repertoire();
    }
    static void TearDownTestSuite() {
        delete base_;
        base_ = nullptr;
    }
    void SetUp() override {
        RemetSession();
        session().BaseFichiers = base_->Repertoire() + "/";
    }
    void TearDown() override { RemetSession(); }

    static essai::BaseDeTest* base_;
};
essai::BaseDeTest* Voies::base_ = nullptr;

TEST_F(Voies, AProductHasItsRoutesWithTheirLabels) {
    const auto voies = VoiesProduit("3400001");
    ASSERT_EQ(voies.size(), 2u);
    EXPECT_EQ(voies[0].CodeVoie, "ORAL");
    EXPECT_EQ(voies[0].Libelle, "Voie orale");
    EXPECT_EQ(voies[1].CodeVoie, "RECT");
    EXPECT_EQ(voies[1].Libelle, "Code RECT introuvable");
    EXPECT_EQ(VoiesProduit("3400002").size(), 1u);
    EXPECT_TRUE(VoiesProduit("3400003").empty());
    EXPECT_TRUE(VoiesProduit("340000").empty());  // a prefix of codes is no code
}

TEST_F(Voies, AFailureOfTheStoreGivesFewerRoutes) {
    session().BaseFichiers = "/pas/de/base/";
    EXPECT_TRUE(VoiesProduit("3400001").empty());
}

TEST_F(Voies, ASubstanceHasItsParentOrItself) {
    EXPECT_EQ(SubstancePere(120), 100);
    EXPECT_EQ(SubstancePere(130), 7);
    EXPECT_EQ(SubstancePere(125), 125);  // no row: itself
    EXPECT_EQ(SubstancePere(5), 5);
    EXPECT_EQ(SubstancePere(99999), 100);
}

TEST_F(Voies, NoKeyAtOrAboveGivesZero) {
    essai::BaseDeTest petite;
    petite.Ajoute("VDXWPEFI", {{"CodeParent", 1}, {"CodeEnfant", 50}});
    session().BaseFichiers = petite.Repertoire() + "/";
    EXPECT_EQ(SubstancePere(50), 1);
    EXPECT_EQ(SubstancePere(60), 0);
    EXPECT_EQ(SubstancePere(40), 40);
}

// A table the caller holds is taken again, never reopened nor closed by
// the callee: with the base gone, only the caller's hold lets it read.
TEST_F(Voies, ATableHeldByTheCallerIsTakenAgainNotReopened) {
    const Table& parents = TableDuCatalogue("VDXWPEFI");
    TablesOuvertes tables{&parents};
    const std::string base = session().BaseFichiers;
    session().BaseFichiers = "/pas/de/base/";
    EXPECT_EQ(SubstancePere(120), 100);
    EXPECT_EQ(SubstancePere(120), 100);  // still open
    EXPECT_EQ(TablesOuvertes::Detenteurs(parents.donnees), 1);
    tables.Ferme();
    EXPECT_EQ(TablesOuvertes::Detenteurs(parents.donnees), 0);
    EXPECT_THROW(SubstancePere(120), Echec);
    session().BaseFichiers = base;
    EXPECT_EQ(SubstancePere(120), 100);  // opened and closed by itself
    EXPECT_EQ(TablesOuvertes::Detenteurs(parents.donnees), 0);
}

}  // namespace
}  // namespace vdx
