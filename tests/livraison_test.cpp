// Delivery of results in the four modes, through the worked example of the
// long-term illnesses, and the text exchange of the memory mode.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "platform/hote.h"
#include "session/resultat.h"
#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "tests/support/livraison_essai.h"
#include "platform/notices.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using essai::Livraison;

TEST_F(Livraison, ArrayModeFillsTheHostsArrayWithoutDuplicateKeys) {
    Connecte(0);
    SAFEARRAY* tableau = essai::TableauDeFiches(2);
    ASSERT_EQ(ListeALD_Vdx(&tableau), 3);
    ASSERT_EQ(tableau->rgsabound[0].cElements, 3u);
    auto* fiches = static_cast<VdxCodeLibelle*>(tableau->pvData);
    EXPECT_EQ(fiches[1].Code, 2);
    EXPECT_EQ(hote::Octets(fiches[1].Libelle), "Insuffisances m\xE9" "dullaires");
    EXPECT_EQ(fiches[2].Code, 30);
    // A second call replaces the rows.
    ASSERT_EQ(ListeALD_Vdx(&tableau), 3);
    EXPECT_EQ(tableau->rgsabound[0].cElements, 3u);
    VideTableau(tableau, {TypeChamp::Entier, TypeChamp::Texte});
    SafeArrayDestroy(tableau);
}

// A host that holds its array locked gets -21 and its array as it was:
// the same block, the same strings, nothing freed, nothing leaked.
TEST_F(Livraison, ALockedArrayIsRefusedUntouched) {
    Connecte(0);
    SAFEARRAY* tableau = essai::TableauDeFiches(2);
    ASSERT_EQ(ListeALD_Vdx(&tableau), 3);
    auto* fiches = static_cast<VdxCodeLibelle*>(tableau->pvData);
    const BSTR libelle = fiches[1].Libelle;
    void* const donnees = tableau->pvData;
    ASSERT_EQ(SafeArrayLock(tableau), S_OK);
    EXPECT_EQ(ListeALD_Vdx(&tableau), VDX_OPERATION_TABLEAU);
    EXPECT_EQ(tableau->pvData, donnees);
    EXPECT_EQ(tableau->rgsabound[0].cElements, 3u);
    EXPECT_EQ(fiches[1].Libelle, libelle);
    EXPECT_EQ(fiches[1].Code, 2);
    EXPECT_EQ(hote::Octets(fiches[1].Libelle), "Insuffisances m\xE9" "dullaires");
    ASSERT_EQ(SafeArrayUnlock(tableau), S_OK);
    VideTableau(tableau, {TypeChamp::Entier, TypeChamp::Texte});
    SafeArrayDestroy(tableau);
}

TEST_F(Livraison, AWideSessionGivesWideLabels) {
    Connecte(0, 1);
    SAFEARRAY* tableau = essai::TableauDeFiches(2);
    ASSERT_EQ(ListeALD_Vdx(&tableau), 3);
    auto* fiches = static_cast<VdxCodeLibelle*>(tableau->pvData);
    EXPECT_EQ(SysStringLen(fiches[1].Libelle), 25u);
    EXPECT_EQ(fiches[1].Libelle[15], u'\u00E9');
    EXPECT_EQ(hote::VersTexte(fiches[1].Libelle), "Insuffisances m\xE9" "dullaires");
    // A single text result stays 8-bit in a wide session.
    BSTR monnaie = nullptr;
    ASSERT_EQ(Monnaie_Vdx(&monnaie), 1);
    EXPECT_EQ(SysStringByteLen(monnaie), 3u);
    EXPECT_EQ(hote::Octets(monnaie), "EUR");
    hote::Libere(&monnaie);
    VideTableau(tableau, {TypeChamp::Entier, TypeChamp::Texte});
    SafeArrayDestroy(tableau);
}

TEST_F(Livraison, FlatModesDeliverTheSameRows) {
    Connecte(2);
    EXPECT_EQ(ListeALD_Vdx(nullptr), 3);
    EXPECT_EQ(*session().ChaineMemoire, attendu);

    session().ModeSortie = 3;
    EXPECT_EQ(ListeALD_Vdx(nullptr), 3);
    EXPECT_EQ(Fichier("Vdxout.txt"), attendu);

    session().ModeSortie = 1;
    EXPECT_EQ(ListeALD_Vdx(nullptr), 3);
    EXPECT_EQ(hote::PrendTextePartage(), attendu);
    // Mode 3 reads its input from the shared slot too.
    session().ModeSortie = 3;
    EXPECT_EQ(LitTexte(), attendu);
}

TEST_F(Livraison, AnEmptyListDeliversNothingInAnyMode) {
    BaseDeTest vide;
    essai::AjouteIdentite(vide);
    ASSERT_EQ(Connection_Vdx(vide.Repertoire().c_str(), 2, 0), 1);
    SetString_Vdx("avant");
    EXPECT_EQ(ListeALD_Vdx(nullptr), VDX_CODE_INCONNU);
    EXPECT_EQ(*session().ChaineMemoire, "avant");
    session().ModeSortie = 0;
    SAFEARRAY* tableau = essai::TableauDeFiches(2);
    EXPECT_EQ(ListeALD_Vdx(&tableau), VDX_CODE_INCONNU);
    EXPECT_EQ(tableau->rgsabound[0].cElements, 0u);
    SafeArrayDestroy(tableau);
}

TEST_F(Livraison, RefusesAMissingOrMisshapenArray) {
    Connecte(0);
    EXPECT_EQ(ListeALD_Vdx(nullptr), VDX_ARGUMENT2);
    SAFEARRAY* absent = nullptr;
    EXPECT_EQ(ListeALD_Vdx(&absent), VDX_ARGUMENT2);
    SAFEARRAY* troisChamps = essai::TableauDeFiches(3);
    EXPECT_EQ(ListeALD_Vdx(&troisChamps), VDX_ARGUMENT2);
    SafeArrayDestroy(troisChamps);
    DeConnection2_Vdx();
    EXPECT_EQ(ListeALD_Vdx(nullptr), VDX_NON_CONNECTE);
}

TEST_F(Livraison, MemoryTextIsReadByPages) {
    ASSERT_EQ(SetString_Vdx("0123456789"), 1);
    EXPECT_EQ(GetLenString_Vdx(), 11);
    char page[5] = "xxxx";
    std::vector<std::string> pages;
    for (int32_t n = 1; GetString2_Vdx(page, n, 5) == 1; ++n) pages.emplace_back(page);
    EXPECT_EQ(pages, (std::vector<std::string>{"0123", "4567", "89"}));
    EXPECT_STREQ(page, "");
    EXPECT_EQ(GetString2_Vdx(page, 0, 5), 0);
    EXPECT_EQ(GetString2_Vdx(page, 1, 1), 0);
    EXPECT_EQ(GetString2_Vdx(nullptr, 1, 5), 0);
    char tout[16];
    EXPECT_EQ(GetString_Vdx(tout), 1);
    EXPECT_STREQ(tout, "0123456789");
    EXPECT_EQ(GetString_Vdx(nullptr), 0);
}

TEST_F(Livraison, SetStringReplacesAndSetString2Appends) {
    ASSERT_EQ(SetString_Vdx("abc"), 1);
    EXPECT_EQ(SetString_Vdx(""), 1);
    EXPECT_EQ(*session().ChaineMemoire, "abc");
    EXPECT_EQ(SetString2_Vdx("def"), 1);
    EXPECT_EQ(SetString2_Vdx(""), 1);
    EXPECT_EQ(*session().ChaineMemoire, "abcdef");
    EXPECT_EQ(SetString2_Vdx(nullptr), 1);
    EXPECT_EQ(GetLenString_Vdx(), 0);
    EXPECT_EQ(SetString2_Vdx("ghi"), 1);
    EXPECT_EQ(*session().ChaineMemoire, "ghi");
    EXPECT_EQ(SetString_Vdx(nullptr), VDX_ARGUMENT1);

    // Without any text, paging faults into the frame under its older name.
    SetString2_Vdx(nullptr);
    char page[5];
    notices.boites.clear();
    EXPECT_EQ(GetString2_Vdx(page, 1, 5), VDX_ERREUR_INTERNE);
    ASSERT_EQ(notices.boites.size(), 1u);
    EXPECT_EQ(notices.boites[0].texte, "Une erreur interne est survenue lors de l'appel de la fonction GetString_Vdx !");

    SetString_Vdx("abc");
    Connecte(2);
    DeConnection_Vdx();
    EXPECT_EQ(GetLenString_Vdx(), 0);
}

}  // namespace
}  // namespace vdx
