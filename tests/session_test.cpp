// The session through its exports: connection and its advice, the frame and
// its codes, the error sentence, the switches and the base's identity.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "platform/chemin.h"
#include "platform/horloge.h"
#include "platform/hote.h"
#include "session/cadre.h"
#include "session/connexion.h"
#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "platform/notices.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

using essai::AjouteIdentite;
using essai::BaseDeTest;

class Session : public ::testing::Test {
protected:
    void SetUp() override {
        DeConnection2_Vdx();
        RemetSession();
        horloge::FixeDate(horloge::Date{15, 6, 2026});
    }
    void TearDown() override {
        DeConnection2_Vdx();
        RemetSession();
        horloge::FixeDate(std::nullopt);
    }

    int32_t Connecte(BaseDeTest& base, int32_t mode = 0, int32_t unicode = 0) {
        return Connection_Vdx(base.Repertoire().c_str(), mode, unicode);
    }

    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
};

TEST_F(Session, RefusesAMissingOrIncompleteBase) {
    EXPECT_EQ(Connection_Vdx(nullptr, 0, 0), VDX_ARGUMENT1);
    EXPECT_EQ(Connection_Vdx("", 0, 0), VDX_ARGUMENT1);
    EXPECT_EQ(Connection_Vdx(std::string(600, 'a').c_str(), 0, 0), VDX_ARGUMENT1);

    BaseDeTest base;
    AjouteIdentite(base);
    std::filesystem::remove(base.Repertoire() + "/VDXPRO.NDX");
    EXPECT_EQ(Connection_Vdx(base.Repertoire().c_str(), 0, 0), VDX_FICHIERS_MANQUANTS);
    BSTR texte = nullptr;
    EXPECT_EQ(Monnaie_Vdx(&texte), VDX_NON_CONNECTE);
    hote::Libere(&texte);
}

TEST_F(Session, KeepsTheFirstBaseUntilTheSessionEnds) {
    BaseDeTest premiere, seconde;
    AjouteIdentite(premiere);
    AjouteIdentite(seconde);
    ASSERT_EQ(Connection_Vdx((premiere.Repertoire() + chemin::Separateur).c_str(), 2, 1), 1);
    EXPECT_EQ(session().BaseFichiers, premiere.Repertoire() + chemin::Separateur);
    EXPECT_EQ(session().ChainesUnicode, 0);  // wide strings exist in array mode only

    EXPECT_EQ(Connecte(seconde), 1);
    EXPECT_EQ(session().BaseFichiers, premiere.Repertoire() + chemin::Separateur);
    EXPECT_EQ(session().ModeSortie, 2);
    DeConnection_Vdx();
    EXPECT_EQ(Connecte(seconde), 1);
    EXPECT_EQ(session().BaseFichiers, premiere.Repertoire() + chemin::Separateur);

    DeConnection2_Vdx();
    EXPECT_EQ(Connecte(seconde), 1);
    EXPECT_EQ(session().BaseFichiers, seconde.Repertoire() + chemin::Separateur);
    EXPECT_EQ(session().ModeSortie, 0);
}

struct CasAge {
    const char* date;
    bool avis;
};

TEST_F(Session, AdvisesAnUpdateAfterFiveCalendarMonths) {
    horloge::FixeDate(horloge::Date{1, 7, 2026});
    for (const CasAge cas : {CasAge{"01/02/2026", false}, CasAge{"31/01/2026", true}, CasAge{"15/12/2025", true},
                             CasAge{"15/08/2025", true}, CasAge{"15/06/2024", false}, CasAge{"15/07/2027", false},
                             CasAge{"??", false}}) {
        SCOPED_TRACE(cas.date);
        BaseDeTest base;
        AjouteIdentite(base, cas.date);
        base.Repertoire();
        notices.boites.clear();
        ASSERT_EQ(Connecte(base), 1);
        const bool vu = !notices.boites.empty() && notices.boites[0].titre == "Information importante";
        EXPECT_EQ(vu, cas.avis);
        if (vu) {
            EXPECT_EQ(notices.boites[0].texte,
                      "La Base de donn\xE9"
                      "es VDX date de plus de cinq mois, pensez \xE0 faire la mise \xE0 jour !");
            EXPECT_EQ(notices.boites[0].style, 48);
        }
        DeConnection2_Vdx();
    }
}

TEST_F(Session, WarnsWhenTheFilesAreNotOfTheLibrarysVersion) {
    for (auto [version, enPhase] : {std::pair{"4.6.9.9", true}, std::pair{"4.7.2.0", false}, std::pair{"3", false}}) {
        SCOPED_TRACE(version);
        BaseDeTest base;
        AjouteIdentite(base, "01/06/2026", version);
        base.Repertoire();
        notices.boites.clear();
        ASSERT_EQ(Connecte(base), 1);
        ASSERT_EQ(notices.boites.size(), enPhase ? 0u : 1u);
        if (!enPhase) {
            EXPECT_EQ(notices.boites[0].titre, "     Information importante");
            EXPECT_NE(notices.boites[0].texte.find("KORVA ne pourra \xEAtre tenu"), std::string::npos);
        }
        // Connection2_Vdx gives no advice at all.
        DeConnection2_Vdx();
        notices.boites.clear();
        EXPECT_EQ(Connection2_Vdx(base.Repertoire().c_str(), 0, 0), 1);
        EXPECT_TRUE(notices.boites.empty());
        DeConnection2_Vdx();
    }
}

TEST_F(Session, ReadsTheIdentityOfTheBase) {
    BaseDeTest base;
    AjouteIdentite(base, "01/06/2026", "4.6.2.0", false);
    ASSERT_EQ(Connecte(base), 1);

    VdxVersion version{nullptr, nullptr};
    ASSERT_EQ(Version_Vdx(&version), 1);
    EXPECT_EQ(hote::Octets(version.Version), "Base de test");
    EXPECT_EQ(hote::Octets(version.DateVersion), "01/06/2026");
    BSTR texte = nullptr;
    ASSERT_EQ(VersionFichier_Vdx(&texte), 1);
    EXPECT_EQ(hote::Octets(texte), "4.6.2.0");
    ASSERT_EQ(Monnaie_Vdx(&texte), 1);
    EXPECT_EQ(hote::Octets(texte), "F");  // no currency record

    session().ModeSortie = 2;
    ASSERT_EQ(Version_Vdx(nullptr), 1);
    EXPECT_EQ(*session().ChaineMemoire, "Base de test@01/06/2026");
    hote::Libere(&version.Version);
    hote::Libere(&version.DateVersion);
    hote::Libere(&texte);
}

TEST_F(Session, TellsWhichTablesOfTheBaseHoldRecords) {
    BaseDeTest base;
    AjouteIdentite(base);
    base.Ajoute("VDXPRO", {{"CodeCIP", "3000001"}, {"Libelle", "PRODUIT"}});
    EXPECT_EQ(TablePresente_Vdx("VDXPRO"), VDX_NON_CONNECTE);
    ASSERT_EQ(Connecte(base), 1);
    EXPECT_EQ(TablePresente_Vdx("VDXPRO"), 1);
    EXPECT_EQ(TablePresente_Vdx("VDXZICOU"), 0);
    EXPECT_EQ(TablePresente_Vdx("PRO"), VDX_CODE_INCONNU);  // a table of the doctor's base
    EXPECT_EQ(TablePresente_Vdx("VDXNULLE"), VDX_CODE_INCONNU);
    EXPECT_EQ(TablePresente_Vdx(""), VDX_ARGUMENT1);
    EXPECT_EQ(TablePresente_Vdx(nullptr), VDX_ARGUMENT1);
}

TEST_F(Session, AMissingVersionRecordFailsTheConnection) {
    BaseDeTest base;
    base.Ajoute("VDXDAT", {{"Numero", VDXDAT::Date}, {"Texte", "01/06/2026"}});
    base.Ajoute("VDXDAT", {{"Numero", VDXDAT::VersionFichiers}, {"Texte", "4.6.2.0"}});
    EXPECT_EQ(Connecte(base), VDX_FICHE_MANQUANTE);
    // The store was started: the session is connected all the same.
    BSTR texte = nullptr;
    EXPECT_EQ(VersionFichier_Vdx(&texte), 1);
    VdxVersion version{nullptr, nullptr};
    EXPECT_EQ(Version_Vdx(&version), VDX_FICHE_MANQUANTE);
    // A failed call leaves the strings empty, not as they were.
    EXPECT_EQ(SysStringByteLen(version.Version), 0u);
    hote::Libere(&texte);
    hote::Libere(&version.Version);
    hote::Libere(&version.DateVersion);
}

TEST_F(Session, AFaultReachesTheCatchAllWithTheExportsName) {
    notices.boites.clear();
    EXPECT_EQ(Cadre("Version_Vdx", []() -> int32_t { throw std::runtime_error("panne"); }), VDX_ERREUR_INTERNE);
    ASSERT_EQ(notices.boites.size(), 1u);
    EXPECT_EQ(notices.boites[0].texte, "Une erreur interne est survenue lors de l'appel de la fonction Version_Vdx !");
    EXPECT_EQ(notices.boites[0].titre, "Erreur DLL");
    EXPECT_EQ(notices.boites[0].style, 48);
}

// A null host string or record where a result goes is an absent argument:
// the code of its position, and no message box.
TEST_F(Session, ANullResultPointerGivesThePositionsCode) {
    BaseDeTest base;
    AjouteIdentite(base);
    ASSERT_EQ(Connecte(base), 1);
    notices.boites.clear();
    EXPECT_EQ(Version_Vdx(nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(VersionFichier_Vdx(nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(Monnaie_Vdx(nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(SetString_Vdx(nullptr), VDX_ARGUMENT1);
    BSTR texte = nullptr;
    EXPECT_EQ(LibelleStupefiant_Vdx(nullptr, &texte), VDX_ARGUMENT1);
    EXPECT_EQ(LibelleStupefiant_Vdx("SKENAN", nullptr), VDX_ARGUMENT2);
    EXPECT_TRUE(notices.boites.empty());
}

TEST_F(Session, GivesTheStoresErrorInOneSentence) {
    BaseDeTest base;
    AjouteIdentite(base);
    ASSERT_EQ(Connecte(base), 1);
    std::ofstream(base.Repertoire() + "/VDXYALD.DAT") << "ceci n'est pas une table";
    std::ofstream(base.Repertoire() + "/VDXYALD.NDX") << "ceci non plus";
    SAFEARRAY* tableau = essai::TableauDeFiches(2);
    EXPECT_EQ(ListeALD_Vdx(&tableau), VDX_ECHEC_MAGASIN);
    char tampon[300];
    EXPECT_STREQ(GetLastError_Vdx(tampon), "Anomalie num\xE9ro : 12 sur le fichier : VDXYALD.DAT");
    // Told once; then the store's current word, under the same file.
    const std::string suite = GetLastError_Vdx(tampon);
    EXPECT_EQ(suite.rfind("Anomalie num\xE9ro : ", 0), 0u);
    EXPECT_NE(suite.find(" sur le fichier : VDXYALD.DAT"), std::string::npos);
    EXPECT_EQ(GetLastError_Vdx(nullptr), nullptr);
    SafeArrayDestroy(tableau);
}

// The error and the file are taken where the store fails: the closes that
// run while the call unwinds don't change them.
TEST_F(Session, TellsTheErrorWhereTheStoreFailedNotWhereTheCallEnded) {
    BaseDeTest base;
    AjouteIdentite(base);
    base.Ajoute("VDXCLA", {{"CodeClasse", "A01"}, {"Libelle", "Antalgiques"}});
    ASSERT_EQ(Connecte(base, ModeMemoire), 1);
    std::filesystem::remove(base.Repertoire() + "/VDXCLA.NDX");
    EXPECT_EQ(RechercheClasseParPas_Vdx("antal", nullptr, nullptr, 5), VDX_ECHEC_MAGASIN);
    char tampon[300];
    EXPECT_STREQ(GetLastError_Vdx(tampon), "Anomalie num\xE9ro : 12 sur le fichier : VDXCLA.NDX");
}

TEST_F(Session, AnnouncesCallsToAnAgentSeenAtConnection) {
    NotifieAgent("MonographieHtml@CodeCIP=", "3400000");
    EXPECT_TRUE(notices.notifications.empty());

    BaseDeTest base;
    AjouteIdentite(base);
    notices.agents.insert("AgentVDX");
    ASSERT_EQ(Connecte(base), 1);
    notices.agents.clear();  // once seen, the agent is taken as present
    NotifieAgent("Posoliste2@CodeCIP=", "3400000");
    ASSERT_EQ(notices.notifications.size(), 1u);
    EXPECT_EQ(notices.notifications[0].nom, "AgentVDX");
    EXPECT_EQ(notices.notifications[0].texte, "Posoliste2@CodeCIP=3400000@");
}

TEST_F(Session, SwitchesStoreTheirValues) {
    EXPECT_EQ(NiveauCI_Vdx(3), 3);
    EXPECT_EQ(NiveauCI_Vdx(-1), 3);
    EXPECT_EQ(NiveauInteraction_Vdx(-5), 0);
    EXPECT_EQ(NiveauInteraction_Vdx(2), 2);
    EXPECT_EQ(ActiveCIP13_Vdx(7), 1);
    EXPECT_EQ(session().CIP13Actif, 7);
    EXPECT_EQ(ActiveHospitaliers_Vdx(42), 1);
    EXPECT_TRUE(session().HospitaliersActifs);
    EXPECT_EQ(ActiveMedDC_Vdx(1), 1);
    EXPECT_FALSE(session().MedDCMasque);

    int32_t champs[9];
    std::fill(std::begin(champs), std::end(champs), 7);
    EXPECT_EQ(Fonctionnalites_Vdx(0, champs), 0);
    EXPECT_EQ(champs[8], 0);
    session().ModeSortie = 2;
    champs[0] = 7;
    EXPECT_EQ(Fonctionnalites_Vdx(0, champs), 0);
    EXPECT_EQ(champs[0], 7);
    EXPECT_EQ(Fonctionnalites_Vdx(0, nullptr), 0);
}

}  // namespace
}  // namespace vdx
