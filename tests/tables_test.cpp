// Opening tables by name and number, the steps of a walk, and what a
// failure leaves for the host.
#include <gtest/gtest.h>

#include <fstream>

#include "session/cadre.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fixture.h"
#include "store/layouts.h"

namespace vdx {
namespace {

class Tables : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        base_ = new essai::BaseDeTest;
        for (const char* code : {"10", "20", "30"}) base_->Ajoute("VDXYALD", {{"Code", code}, {"Libelle", code}});
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

    const Table& ald = TableDuCatalogue("VDXYALD");
    static essai::BaseDeTest* base_;
};
essai::BaseDeTest* Tables::base_ = nullptr;

TEST_F(Tables, ANumberLeftOpenByAFailedCallIsRecovered) {
    ASSERT_EQ(OuvreTable(ald.fichierDonnees, ald.donnees), 1);
    // The failed call never closed it; the next open closes and reopens.
    EXPECT_EQ(OuvreTable(ald.fichierDonnees, ald.donnees), 1);
    EXPECT_EQ(FermeTable(ald.fichierDonnees, ald.donnees), 1);
    EXPECT_EQ(FermeTable(ald.fichierDonnees, ald.donnees), 0);
    EXPECT_EQ(session().FichierErreur, "VDXYALD.DAT");
}

TEST_F(Tables, AMissingFileIsNamedWithoutItsDirectory) {
    EXPECT_EQ(OuvreTable("VDXABSENT.DAT", 300 - 12), 0);
    EXPECT_EQ(session().FichierErreur, "VDXABSENT.DAT");
    session().BaseFichiers = std::string(300, 'x') + "/";
    EXPECT_EQ(OuvreTable(ald.fichierDonnees, ald.donnees), 0);
    EXPECT_EQ(session().FichierErreur, "VDXYALD.DAT");
}

TEST_F(Tables, TheScopeClosesWhatItOpenedOnEveryPath) {
    try {
        TablesOuvertes tables{&ald};
        throw Echec{CodeInconnu};
    } catch (const Echec&) {
    }
    // Closed by the scope: a plain open of the same number needs no retry.
    EXPECT_EQ(magasin::OpenCtFile(ald.donnees, (base_->Repertoire() + "/VDXYALD.DAT").c_str(), magasin::LectureSeule),
              0);
    magasin::CloseCtFile(ald.donnees, magasin::LectureSeule);

    TablesOuvertes tables{&ald};
    tables.Ferme();
    EXPECT_EQ(magasin::CloseCtFile(ald.index(), magasin::LectureSeule), magasin::NumeroInvalide);
}

TEST_F(Tables, ACursorWalksAndLooksUpWithPaddedKeys) {
    TablesOuvertes tables{&ald};
    Curseur curseur(ald);
    std::vector<std::string> cles;
    for (auto p = curseur.Premiere(); p; p = curseur.Suivante()) cles.emplace_back(curseur.Cle().substr(0, 2));
    EXPECT_EQ(cles, (std::vector<std::string>{"10", "20", "30"}));
    EXPECT_FALSE(curseur.Suivante());

    auto p = curseur.Egale("20");
    ASSERT_TRUE(p);
    EXPECT_EQ(Fiche(FicheA(ald, *p)).Texte(VDXYALD::Libelle), "20");
    EXPECT_FALSE(curseur.Egale("2"));  // padded with NUL, it is another key
    EXPECT_TRUE(curseur.SuperieureOuEgale("2"));
    EXPECT_EQ(curseur.Cle().substr(0, 2), "20");
    EXPECT_TRUE(curseur.SuperieureOuEgale("21"));
    EXPECT_EQ(curseur.Cle().substr(0, 2), "30");
    EXPECT_FALSE(curseur.SuperieureOuEgale("4"));
    tables.Ferme();
}

TEST_F(Tables, AFailureOfTheStoreNamesItsFileAndLeavesWithMinus500) {
    // A key number whose table is not open.
    try {
        Curseur curseur(ald);
        FAIL();
    } catch (const Echec& e) {
        EXPECT_EQ(e.code, EchecMagasin);
        EXPECT_EQ(e.fichier, "VDXYALD.NDX");
    }

    TablesOuvertes tables{&ald};
    try {
        FicheA(ald, 999999);
        FAIL();
    } catch (const Echec& e) {
        EXPECT_EQ(e.code, EchecMagasin);
        EXPECT_EQ(e.fichier, "VDXYALD.DAT");
        EXPECT_NE(e.erreurMagasin, 0);
        EXPECT_EQ(SortieErreur(e), EchecMagasin);
    }
    EXPECT_EQ(session().DerniereErreur, magasin::PositionInvalide);
    EXPECT_EQ(session().FichierErreur, "VDXYALD.DAT");  // kept through the doctor's base closes
    EXPECT_EQ(SortieErreur(CodeInconnu), CodeInconnu);
    EXPECT_EQ(session().DerniereErreur, 0);
    EXPECT_EQ(session().FichierErreur, "VDXYALD.DAT");  // never cleared
}

}  // namespace
}  // namespace vdx
