// Two processes on the same files: the child is forked, works through the
// store and reports by its exit code; the two talk through pipes.
#include "store/partage.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "store/magasin.h"
#include "tests/support/magasin_essai.h"

namespace vdx::magasin {
namespace {

using essai::Cle;
using essai::Erreur;
using essai::EtatIO;
using essai::MagasinBorneTest;
using essai::MagasinTest;

class Enfant {
public:
    // `corps` runs in the child; its result is the child's exit code.
    explicit Enfant(const std::function<int(Enfant&)>& corps) {
        if (::pipe(versParent_) != 0 || ::pipe(versEnfant_) != 0) std::abort();
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(versParent_[0]);
            ::close(versEnfant_[1]);
            InitialiseMagasin(867, 289, 16);
            ::_exit(corps(*this));
        }
        ::close(versParent_[1]);
        ::close(versEnfant_[0]);
    }
    ~Enfant() {
        if (pid_ > 0) Tue();
        ::close(versParent_[0]);
        ::close(versEnfant_[1]);
    }

    // In the child.
    void Signale() { Ecrit(versParent_[1]); }
    void Attends() { Lis(versEnfant_[0]); }
    // In the parent.
    bool AttendsSignal() { return Lis(versParent_[0]); }
    void Reprends() { Ecrit(versEnfant_[1]); }
    int Fin() {
        int statut = 0;
        ::waitpid(pid_, &statut, 0);
        pid_ = -1;
        return WIFEXITED(statut) ? WEXITSTATUS(statut) : 128 + WTERMSIG(statut);
    }
    void Tue() {
        ::kill(pid_, SIGKILL);
        Fin();
    }

private:
    static void Ecrit(int fd) {
        const char c = 1;
        if (::write(fd, &c, 1) != 1) ::_exit(99);
    }
    static bool Lis(int fd) {
        char c;
        return ::read(fd, &c, 1) == 1;
    }
    int versParent_[2]{};
    int versEnfant_[2]{};
    pid_t pid_ = -1;
};

class PartageTest : public MagasinTest {
protected:
    void SetUp() override {
        MagasinTest::SetUp();
        Cree();
        Ajoute("A", "a");
        Ferme();
    }
    int OuvreLecture() {
        const int r = OpenCtFile(Donnees, Chemin("T.DAT").c_str(), LectureSeule);
        if (r == 0) CloseCtFile(Donnees, LectureSeule);
        return r;
    }
    // In a child: opens T.DAT in `mode`, signals, waits, closes.
    std::function<int(Enfant&)> Tient(int mode) {
        return [this, mode](Enfant& e) {
            if (OpenCtFile(Donnees, Chemin("T.DAT").c_str(), mode) != 0) return 1;
            e.Signale();
            e.Attends();
            return CloseCtFile(Donnees, mode) == 0 ? 0 : 2;
        };
    }
};

TEST_F(PartageTest, AnExclusiveHolderKeepsReadersOutUntilItCloses) {
    Enfant enfant(Tient(Exclusif));
    ASSERT_TRUE(enfant.AttendsSignal());
    EXPECT_EQ(OuvreLecture(), OuvertureImpossible);
    EXPECT_EQ(EtatIO(), TenuAilleurs);
    // The index is another file: not held.
    EXPECT_EQ(OpenCtFile(Index, Chemin("T.NDX").c_str(), LectureSeule), 0);
    enfant.Reprends();
    EXPECT_EQ(enfant.Fin(), 0);
    EXPECT_EQ(OuvreLecture(), 0);
}

TEST_F(PartageTest, AKilledExclusiveHolderDoesNotLockTheFileOut) {
    Enfant enfant(Tient(Exclusif));
    ASSERT_TRUE(enfant.AttendsSignal());
    EXPECT_EQ(OuvreLecture(), OuvertureImpossible);
    enfant.Tue();
    EXPECT_EQ(OuvreLecture(), 0);
    EXPECT_EQ(OpenCtFile(Donnees, Chemin("T.DAT").c_str(), Exclusif), 0);
}

TEST_F(PartageTest, ReadersKeepAnExclusiveOpenOutButNotWhenKilled) {
    ASSERT_EQ(OpenCtFile(Donnees, Chemin("T.DAT").c_str(), LectureSeule), 0);
    {
        Enfant enfant([this](Enfant&) {
            const int r = OpenCtFile(Donnees, Chemin("T.DAT").c_str(), Exclusif);
            return r == OuvertureImpossible && EtatIO() == TenuAilleurs ? 0 : 1;
        });
        EXPECT_EQ(enfant.Fin(), 0);
    }
    ASSERT_EQ(CloseCtFile(Donnees, LectureSeule), 0);
    Enfant lecteur(Tient(LectureSeule));
    ASSERT_TRUE(lecteur.AttendsSignal());
    EXPECT_EQ(OpenCtFile(Donnees, Chemin("T.DAT").c_str(), Exclusif), OuvertureImpossible);
    EXPECT_EQ(EtatIO(), TenuAilleurs);
    lecteur.Tue();
    EXPECT_EQ(OpenCtFile(Donnees, Chemin("T.DAT").c_str(), Exclusif), 0);
}

TEST_F(PartageTest, SharedWritersWorkTogetherAndKeepReadersOut) {
    constexpr int Tours = 50;
    ASSERT_EQ(OpenCtFile(Index, Chemin("T.NDX").c_str(), Partage), 0);
    Enfant enfant([this](Enfant& e) {
        if (OpenCtFile(Index, Chemin("T.NDX").c_str(), Partage) != 0) return 1;
        for (int i = 0; i < Tours; ++i) {
            e.Attends();
            if (AddRecordKey(Index, Cle("E" + std::to_string(100 + i), LongueurCle).data(), 1, 0) != 0) return 2;
            e.Signale();
        }
        return CloseCtFile(Index, Partage) == 0 ? 0 : 3;
    });
    // Turn by turn, each sees what the other wrote.
    for (int i = 0; i < Tours; ++i) {
        ASSERT_EQ(AddRecordKey(Index, Cle("P" + std::to_string(100 + i), LongueurCle).data(), 1, 0), 0);
        enfant.Reprends();
        ASSERT_TRUE(enfant.AttendsSignal());
        ASSERT_EQ(CleEgale(Index, Cle("E" + std::to_string(100 + i), LongueurCle).data()), 1u) << i;
    }
    ASSERT_EQ(CloseCtFile(Index, Partage), 0);
    EXPECT_EQ(enfant.Fin(), 0);

    Enfant ecrivain([this](Enfant& e) {
        if (OpenCtFile(Index, Chemin("T.NDX").c_str(), Partage) != 0) return 1;
        e.Signale();
        e.Attends();
        return 0;
    });
    ASSERT_TRUE(ecrivain.AttendsSignal());
    EXPECT_EQ(OpenCtFile(Index, Chemin("T.NDX").c_str(), LectureSeule), OuvertureImpossible);
    EXPECT_EQ(EtatIO(), TenuAilleurs);
    ecrivain.Reprends();
    EXPECT_EQ(ecrivain.Fin(), 0);  // left without closing: nothing pending in shared writing
    ASSERT_EQ(OpenCtFile(Index, Chemin("T.NDX").c_str(), LectureSeule), 0);
    std::string k(LongueurCle, '\0');
    int n = 0;
    for (Position p = PremiereCle(Index, k.data()); p; p = CleSuivante(Index, k.data())) ++n;
    EXPECT_EQ(n, 1 + 2 * Tours);
}

TEST_F(PartageTest, AKilledWriterLeavesTheFileOpenableWithWhatItCommitted) {
    Enfant enfant([this](Enfant& e) -> int {
        Ouvre("T", Exclusif);
        for (int i = 0; i < 100; ++i) Ajoute("C" + std::to_string(1000 + i), "engagee");
        Ferme();
        Ouvre("T", Exclusif);
        e.Signale();
        // Killed somewhere in here, commits of 10000 writes included.
        for (int i = 0;; ++i) Ajoute("X" + std::to_string(100000 + i), "en cours");
    });
    ASSERT_TRUE(enfant.AttendsSignal());
    ::usleep(300000);
    enfant.Tue();
    Ouvre();
    std::string k(LongueurCle, '\0');
    EXPECT_NE(CleEgale(Index, Cle("C1099", LongueurCle).data()), 0u);
    int n = 0;
    for (Position p = PremiereCle(Index, k.data()); p; p = CleSuivante(Index, k.data())) ++n;
    EXPECT_EQ(Erreur(), 0);
    EXPECT_GE(n, 101);
    EXPECT_EQ(Lit(CleEgale(Index, Cle("C1050", LongueurCle).data())), "engagee");
}

TEST_F(PartageTest, RecordsNobodyHoldsAreSweptAwayOthersKept) {
    const std::string dossier = Chemin("partage");
    std::ofstream(dossier + "/vdx32-ff-ff") << std::string(4096, '\0');
    Enfant lecteur(Tient(LectureSeule));
    ASSERT_TRUE(lecteur.AttendsSignal());
    // A fresh start here: the first record opened sweeps.
    TermineMagasin();
    FixeDossierPartage(dossier);
    ASSERT_EQ(InitialiseMagasin(867, 289, 16), 0);
    ASSERT_EQ(OpenCtFile(Index, Chemin("T.NDX").c_str(), LectureSeule), 0);
    EXPECT_FALSE(std::filesystem::exists(dossier + "/vdx32-ff-ff"));
    // The reader's record stayed: it still keeps the writer out.
    EXPECT_EQ(OpenCtFile(Donnees, Chemin("T.DAT").c_str(), Exclusif), OuvertureImpossible);
    EXPECT_EQ(EtatIO(), TenuAilleurs);
    lecteur.Reprends();
    EXPECT_EQ(lecteur.Fin(), 0);
}

// Maps bounded by their file: another process's writes outgrow the maps
// this process keeps, its readers' and its writers'.
TEST_F(MagasinBorneTest, MapsOutgrownByAnotherProcessAreMadeAgain) {
    CreeVide();
    auto ecrit = [this](int premier, int nombre, uint32_t n) {
        Enfant enfant([=, this](Enfant&) { return Remplit(premier, nombre, n, Partage) & 0xff; });
        return enfant.Fin();
    };
    ASSERT_EQ(ecrit(0, 10, 100), 0);
    // A reader's map, kept after its close, then outgrown.
    Ouvre("V", LectureSeule);
    EXPECT_TRUE(LitNumero(Donnees, Index, 5) == Contenu(5, 100));
    Ferme();
    ASSERT_EQ(ecrit(10, 3000, 4000), 0);
    Ouvre("V", LectureSeule);
    EXPECT_TRUE(LitNumero(Donnees, Index, 3009) == Contenu(3009, 4000));
    Ferme();
    // Two shared writers at once: each grows its map on the other's pages.
    ASSERT_EQ(OpenCtFile(Donnees, Chemin("V.DAT").c_str(), Partage | Variable), 0);
    ASSERT_EQ(OpenCtFile(Index, Chemin("V.NDX").c_str(), Partage), 0);
    Enfant enfant([this](Enfant& e) {
        if (OpenCtFile(Donnees, Chemin("V.DAT").c_str(), Partage | Variable) != 0) return 1;
        e.Signale();
        e.Attends();
        CloseCtFile(Donnees, 0);
        return Remplit(3010, 2000, 4000, Partage) & 0xff;
    });
    ASSERT_TRUE(enfant.AttendsSignal());
    const std::string fiche = Contenu(9999, 4000);
    const Position p = NouvelleFicheVariable(Donnees, 4000);
    ASSERT_NE(p, 0u);
    ASSERT_EQ(EcritFicheVariable(Donnees, p, fiche.data(), 4000), 0);
    enfant.Reprends();
    ASSERT_EQ(enfant.Fin(), 0);
    for (int i = 0; i < 500; ++i) {
        const Position q = NouvelleFicheVariable(Donnees, 4000);
        ASSERT_NE(q, 0u) << i << " " << Erreur() << " " << EtatIO();
        ASSERT_EQ(EcritFicheVariable(Donnees, q, fiche.data(), 4000), 0);
    }
    EXPECT_TRUE(LitNumero(Donnees, Index, 5009) == Contenu(5009, 4000));
    Ferme();
}

}  // namespace
}  // namespace vdx::magasin
