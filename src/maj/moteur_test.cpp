// A run of the update on a base of its own: a file applied whole or not at
// all, the date with it, the levels, the journal of an interrupted run.
#include "maj/moteur.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "maj/etat.h"
#include "maj/unite.h"
#include "platform/notices.h"
#include "session/connexion.h"
#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;

// A base dated 01/06/2026 with one laboratory, connected in memory mode.
class Mise : public ::testing::Test {
protected:
    void SetUp() override {
        essai::AjouteIdentite(base_);
        base_.Ajoute("VDXLAB", {{"CodeLaboratoire", "SANO"}, {"Libelle", "Sanofi"}});
        DeConnection2_Vdx();
        RemetSession();
        ASSERT_EQ(Connection_Vdx(base_.Repertoire().c_str(), ModeMemoire, 0), 1);
    }
    void TearDown() override {
        DeConnection2_Vdx();
        RemetSession();
        SetTypeMaj_Vdx(4);
    }
    void Fichier(const char* nom, const std::string& texte) {
        std::ofstream(dossier_.Chemin(nom), std::ios::binary) << texte;
    }
    std::string Repertoire() const { return dossier_.Chemin(""); }
    static std::string Labo(const char* code) {
        return LibelleLaboratoire_Vdx(code, nullptr) == 1 ? session().ChaineMemoire.value_or("") : "<absent>";
    }
    static std::string Date() { return DateDeLaBase().value_or("<absent>"); }
    bool Copies() {
        for (const auto& e : fs::directory_iterator(base_.Repertoire()))
            if (e.path().extension() == maj::SuffixeCopie || e.path().filename() == maj::NomJournal) return true;
        return false;
    }

    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
    essai::BaseDeTest base_;
    essai::DossierEssai dossier_;
};

TEST_F(Mise, AFileGoesInWholeAndMovesTheDate) {
    Fichier("RE260602.VDX", "|DEBUT|02/06/2026@x@\r\n|LABF|SANO@Sanofi Nouveau@@\r\n|LABF|NOUV@Nouveau Labo@@\r\n"
                            "|FIN|ce qui suit n'est pas lu");
    const std::string dossier = Repertoire();
    ASSERT_EQ(IsMaj_Vdx(dossier.c_str()), 1);
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), 1);
    EXPECT_EQ(Labo("SANO"), "Sanofi Nouveau");
    EXPECT_EQ(Labo("NOUV"), "Nouveau Labo");
    EXPECT_EQ(Date(), "02/06/2026");
    EXPECT_FALSE(Copies());
    // The label key moved with the record: the old label is no more found.
    ASSERT_EQ(RechercheLaboratoireParPas_Vdx("SANOFI", nullptr, "", 10), 1);
    EXPECT_NE(session().ChaineMemoire.value_or("").find("Sanofi Nouveau"), std::string::npos);
    // The progress: rising, to its end, with the file and the table.
    ASSERT_FALSE(notices.etapes.empty());
    for (size_t i = 1; i < notices.etapes.size(); ++i) EXPECT_GE(notices.etapes[i].fait, notices.etapes[i - 1].fait);
    EXPECT_EQ(notices.etapes.back().fait, notices.etapes.back().total);
    EXPECT_EQ(notices.etapes.front().libelle, "Mise \xE0 jour du 02/06/2026");
    EXPECT_EQ(notices.etapes[1].libelle, "Mise \xE0 jour de la table : LABF");
    // Nothing newer now; a run that finds nothing gives the last result.
    EXPECT_EQ(IsMaj_Vdx(dossier.c_str()), 0);
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), 1);
}

TEST_F(Mise, AFailedFileLeavesTheBaseAsBeforeItAndIsTakenAgain) {
    Fichier("RE260602.VDX", "|DEBUT|02/06/2026@x@\r\n|LABF|NOUV@Nouveau Labo@@\r\n|FIN|");
    Fichier("RE260603.VDX", "|DEBUT|03/06/2026@x@\r\n|LABF|SANO@Change@@\r\n|PRO|3000001@x@\r\n|FIN|");
    const std::string dossier = Repertoire();
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), 0);
    EXPECT_EQ(Labo("NOUV"), "Nouveau Labo");  // the file before stays applied
    EXPECT_EQ(Labo("SANO"), "Sanofi");
    EXPECT_EQ(Date(), "02/06/2026");
    EXPECT_FALSE(Copies());
    EXPECT_EQ(notices.boites.size(), 1u);
    EXPECT_EQ(IsMaj_Vdx(dossier.c_str()), 1);
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), 0);
    // A token longer than the buffer fails its file the same way.
    fs::remove(dossier_.Chemin("RE260603.VDX"));
    Fichier("RE260604.VDX", "|DEBUT|04/06/2026@x@\r\n|LABF|SANO@" + std::string(300000, 'x') + "@@\r\n|FIN|");
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), 0);
    EXPECT_EQ(Labo("SANO"), "Sanofi");
    EXPECT_EQ(ExecuteMaj2_Vdx(dossier.c_str()), 1);  // its buffer holds the field, cut to its width
    EXPECT_EQ(Labo("SANO"), std::string(25, 'x'));
}

TEST_F(Mise, LevelsUnknownMarkersAndAFileWithoutItsHead) {
    SetTypeMaj_Vdx(1);
    Fichier("RE260602.VDX", "|DEBUT|02/06/2026@x@\r\n|LABF|SANO@Change@@\r\n|FIN|");
    const std::string dossier = Repertoire();
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), 1);
    EXPECT_EQ(Labo("SANO"), "Sanofi");  // below its level, read and passed over
    EXPECT_EQ(Date(), "02/06/2026");
    SetTypeMaj_Vdx(260);
    // An unknown marker closes its table, its rows pass; no "|DEBUT|": the
    // date written is the previous file's of the run, empty for the first;
    // no "|FIN|": the file ends with its bytes.
    Fichier("RE260603.VDX", "|INCONNU|a@b@\r\n|LABF|NOUV@Nouveau@@\r\n|XYZ|c@d@\r\n");
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), 1);
    EXPECT_EQ(Labo("NOUV"), "Nouveau");
    EXPECT_EQ(Date(), "");
    EXPECT_EQ(ExecuteMaj_Vdx(nullptr), -10);
    DeConnection2_Vdx();
    EXPECT_EQ(ExecuteMaj_Vdx(dossier.c_str()), -2);
}

TEST(MajInterrompue, AJournalIsFinishedAndCopiesWithoutOneGo) {
    essai::DossierEssai dossier;
    const auto ecrit = [&](const char* nom, const char* texte) { std::ofstream(dossier.Chemin(nom)) << texte; };
    ecrit("A.DAT", "ancien");
    ecrit("A.DAT.maj", "nouveau");
    ecrit("B.NDX.maj", "orphelin");
    ecrit(maj::NomJournal, (dossier.Chemin("A.DAT.maj") + "\t" + dossier.Chemin("A.DAT") + "\n").c_str());
    EXPECT_TRUE(maj::TermineMajInterrompue(dossier.Chemin("")));
    EXPECT_EQ(essai::LitFichier(dossier.Chemin("A.DAT")), "nouveau");
    for (const char* absent : {"A.DAT.maj", "B.NDX.maj", maj::NomJournal})
        EXPECT_FALSE(fs::exists(dossier.Chemin(absent))) << absent;
}

}  // namespace
}  // namespace vdx
