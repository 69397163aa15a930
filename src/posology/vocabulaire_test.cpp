// The posology's vocabularies: the lists sorted by label in byte order (the
// cycle placed by its own), a table without a record, the labels of a code
// and of a terrain.
#include "posology/vocabulaire.h"

#include <gtest/gtest.h>

#include "session/cadre.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

class VocabulairePoso : public essai::SurUneBase<VocabulairePoso> {
public:
    static void Remplit(BaseDeTest& b) {
        for (auto [code, libelle] : {std::pair{1, "matin"}, {2, "soir"}, {3, "au coucher"}, {4, "Midi"}})
            b.Ajoute("VDXPMOM", {{"Code", code}, {"Libelle", libelle}});
        b.Ajoute("VDXPMOM", {{"Code", 5}, {"Libelle", "matin et soir"}, {"Multiplicateur", 2.5}});
        for (auto [code, libelle] : {std::pair{10, "minute"}, {40, "jour"}, {50, "semaine"}, {70, "an"}})
            b.Ajoute("VDXPDUR", {{"Code", code}, {"Libelle", libelle}});
        b.Ajoute("VDXPUPRI", {{"Code", 1}, {"Libelle", "comprimé"}, {"LibellePluriel", "comprimés"}});
        b.Ajoute("VDXPNAT", {{"Code", 1}, {"Libelle", "Traitement d'attaque"}});
    }
};

TEST_F(VocabulairePoso, ListsAreSortedByLabelInByteOrderTheCycleAmongThem) {
    ASSERT_EQ(PosoMoments_Vdx(nullptr), 1);
    EXPECT_EQ(Memoire(), "4@Midi\r\n3@au coucher\r\n1@matin\r\n5@matin et soir\r\n2@soir");
    ASSERT_EQ(PosoDurees_Vdx(nullptr), 1);
    EXPECT_EQ(Memoire(), "70@an\r\n-1@cycle\r\n40@jour\r\n10@minute\r\n50@semaine");
    ASSERT_EQ(PosoUnitesPrise_Vdx(nullptr), 1);
    EXPECT_EQ(Memoire(), "1@comprim\xE9");
    EXPECT_EQ(PosoSpecificationsPrise_Vdx(nullptr), -100);  // no record

    ReconnecteEnTableau();
    SAFEARRAY* mots = essai::TableauDeFiches(2);
    ASSERT_EQ(PosoMoments_Vdx(&mots), 1);
    ASSERT_EQ(mots->rgsabound[0].cElements, 5u);
    EXPECT_EQ(essai::Texte(static_cast<VdxCodeLibelle*>(mots->pvData)[1].Libelle), "au coucher");
    EXPECT_EQ(PosoMoments_Vdx(nullptr), -20);
    VideTableau(mots, {TypeChamp::Entier, TypeChamp::Texte});
    SafeArrayDestroy(mots);
    DeConnection2_Vdx();
    EXPECT_EQ(PosoMoments_Vdx(nullptr), -2);
}

TEST_F(VocabulairePoso, TheLabelOfACodeAndItsFailures) {
    ASSERT_EQ(LibelleMoment_Vdx(2, nullptr), 1);
    EXPECT_EQ(Memoire(), "soir");
    ASSERT_EQ(LibelleNature_Vdx(1, nullptr), 1);
    EXPECT_EQ(Memoire(), "Traitement d'attaque");
    EXPECT_EQ(LibelleMoment_Vdx(99, nullptr), -90);
    EXPECT_EQ(LibelleDurees_Vdx(CodeCycle, nullptr), -90);  // the cycle is no record
    EXPECT_EQ(LibelleVoie_Vdx(1, nullptr), -90);
    ASSERT_EQ(LibelleUnitePrise_Vdx(1, nullptr), 1);
    EXPECT_EQ(Memoire(), "comprim\xE9");
    EXPECT_EQ(LibelleUnitePrise_Vdx(0, nullptr), -10);
    const DansContexte dans(session());
    EXPECT_EQ(LibelleUnitePrise(1, true), "comprim\xE9s");
    EXPECT_THROW(LibelleUnitePrise(2, true), Echec);
}

TEST_F(VocabulairePoso, AMomentWithItsMultiplier) {
    ASSERT_EQ(LibelleMoment2_Vdx(5, nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "matin et soir@2.5");
    ASSERT_EQ(LibelleMoment2_Vdx(1, nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "matin@0");
    EXPECT_EQ(LibelleMoment2_Vdx(9, nullptr, nullptr), -90);
    ReconnecteEnTableau();
    BSTR libelle = nullptr;
    float multiplicateur = -1;
    ASSERT_EQ(LibelleMoment2_Vdx(5, &libelle, &multiplicateur), 1);
    EXPECT_EQ(essai::Texte(libelle), "matin et soir");
    EXPECT_EQ(multiplicateur, 2.5f);
    EXPECT_EQ(LibelleMoment2_Vdx(5, &libelle, nullptr), -30);
    EXPECT_EQ(LibelleMoment2_Vdx(9, &libelle, &multiplicateur), -90);
    EXPECT_EQ(essai::Texte(libelle), "");  // emptied first
    SysFreeString(libelle);
}

TEST(CodeDureeSurTrois, ThreeCharactersWhateverTheCode) {
    for (auto [code, texte] : {std::pair{0, "000"}, {-1, "-01"}, {4, "004"}, {40, "040"}, {1234, "123"}, {-123, "-12"}})
        EXPECT_EQ(CodeDureeSurTrois(code), texte) << code;
}

TEST(LibelleTerrain, OnlyAdultAndChildLookAtTheSecondLetter) {
    const std::pair<const char*, const char*> cas[] = {
        {"A", "Adulte"}, {"AD", "Adolescent"}, {"AE", "Adulte - Enfant"}, {"AF", "Adulte Femme"},
        {"AH", "Adulte Homme"}, {"AX", ""}, {"E", "Enfant"}, {"EZ", "Enfant"}, {"EN", "Enfant - Nourrisson"},
        {"N", "Nourrisson"}, {"NX", "Nourrisson"}, {"S", "Sujet \xE2g\xE9"}, {"T", "Tout \xE2ge"}, {"X", ""}, {"", ""}};
    for (auto [terrain, libelle] : cas) EXPECT_EQ(LibelleTerrain(terrain), libelle) << terrain;
}

}  // namespace
}  // namespace vdx
