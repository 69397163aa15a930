#include "store/magasin.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>
#include <vector>

#include "platform/fichiers.h"
#include "tests/support/magasin_essai.h"

namespace vdx::magasin {
namespace {

using essai::Cle;
using essai::Erreur;
using essai::EtatIO;
using essai::MagasinTest;

// Keys gathered by walking an index with `pas` from `debut`.
std::vector<std::string> Parcours(int index, Position (*debut)(int, void*), Position (*pas)(int, void*)) {
    std::vector<std::string> cles;
    std::string k(MagasinTest::LongueurCle, '\0');
    for (Position p = debut(index, k.data()); p != 0; p = pas(index, k.data())) cles.push_back(k.c_str());
    EXPECT_EQ(Erreur(), 0);
    return cles;
}

TEST_F(MagasinTest, WalksKeysInUnsignedByteOrderBothWays) {
    Cree();
    for (const char* k : {"MARTIN", "ABEL", "\xC9TIENNE", "ZOE", "ABELINE"}) Ajoute(k, k);
    Ferme();
    Ouvre();
    // 0xC9 (É) sorts after 'Z' as an unsigned byte.
    const std::vector<std::string> montant{"ABEL", "ABELINE", "MARTIN", "ZOE", "\xC9TIENNE"};
    EXPECT_EQ(Parcours(Index, PremiereCle, CleSuivante), montant);
    // Past the end the loop stays ended without error, and a step back finds the last key.
    std::string k(LongueurCle, '\0');
    EXPECT_EQ(CleSuivante(Index, k.data()), 0u);
    EXPECT_EQ(Erreur(), 0);
    EXPECT_NE(ClePrecedente(Index, k.data()), 0u);
    EXPECT_STREQ(k.c_str(), "\xC9TIENNE");
    EXPECT_EQ(Parcours(Index, DerniereCle, ClePrecedente),
              std::vector<std::string>(montant.rbegin(), montant.rend()));
    EXPECT_NE(CleSuivante(Index, k.data()), 0u);  // from before the first key
    EXPECT_STREQ(k.c_str(), "ABEL");
}

TEST_F(MagasinTest, ExactAndAtOrAboveLookupsNeedNulPadding) {
    Cree();
    const Position martin = Ajoute("MARTIN", "fiche de Martin");
    Ajoute("MARTINE", "fiche de Martine");
    Ajoute("PAUL", "fiche de Paul");
    Ferme();
    Ouvre();
    EXPECT_EQ(CleEgale(Index, Cle("MARTIN", LongueurCle).data()), martin);
    EXPECT_EQ(Lit(martin), "fiche de Martin");
    std::string nonComplete = Cle("MARTIN", LongueurCle);
    nonComplete[6] = ' ';
    EXPECT_EQ(CleEgale(Index, nonComplete.data()), 0u);
    EXPECT_EQ(Erreur(), 0);

    // A prefix search: the prefix padded with NUL, then the following keys.
    std::string k(LongueurCle, '\0');
    EXPECT_EQ(CleSuperieureOuEgale(Index, Cle("MART", LongueurCle).data(), k.data()), martin);
    EXPECT_STREQ(k.c_str(), "MARTIN");
    EXPECT_NE(CleSuivante(Index, k.data()), 0u);
    EXPECT_STREQ(k.c_str(), "MARTINE");

    EXPECT_EQ(CleSuperieureOuEgale(Index, Cle("ZZZ", LongueurCle).data(), k.data()), 0u);
    EXPECT_EQ(Erreur(), 0);
    // A failed exact lookup leaves the current key where the key would be.
    EXPECT_EQ(CleEgale(Index, Cle("N", LongueurCle).data()), 0u);
    EXPECT_NE(CleSuivante(Index, k.data()), 0u);
    EXPECT_STREQ(k.c_str(), "PAUL");
    EXPECT_EQ(CleEgale(Index, Cle("N", LongueurCle).data()), 0u);
    EXPECT_NE(ClePrecedente(Index, k.data()), 0u);
    EXPECT_STREQ(k.c_str(), "MARTINE");
}

TEST_F(MagasinTest, EachKeyNumberKeepsItsOwnCurrentKey) {
    ASSERT_EQ(CreateDataFile(Donnees, Chemin("T.DAT").c_str(), LongueurFiche, 4096, Exclusif), 0);
    ASSERT_EQ(CreateIndexFile(Index, Chemin("T.NDX").c_str(), LongueurCle, 0, 0, 1, 4096, Exclusif), 0);
    ASSERT_EQ(CreateIndexMember(Index, 4, 0, 0, 1), 0);
    for (const char* nom : {"A", "B", "C", "D"}) {
        const Position p = Ajoute(nom, nom);
        // The second key runs the other way.
        const char inverse[4] = {static_cast<char>('Z' - nom[0] + 'A'), 0, 0, 0};
        ASSERT_EQ(AddRecordKey(Index + 1, inverse, p, 0), 0);
    }
    Ferme();
    // Opening the index binds its second key on the number behind it.
    Ouvre();
    std::string k1(LongueurCle, '\0'), k2(4, '\0');
    const Position a = PremiereCle(Index, k1.data());
    EXPECT_NE(PremiereCle(Index + 1, k2.data()), 0u);
    EXPECT_STREQ(k2.c_str(), "W");  // D
    std::string fiche(LongueurFiche, '\0');
    EXPECT_EQ(LitFiche(Donnees, a, fiche.data()), 0);
    EXPECT_NE(CleSuivante(Index, k1.data()), 0u);
    EXPECT_STREQ(k1.c_str(), "B");
    EXPECT_NE(CleSuivante(Index + 1, k2.data()), 0u);
    EXPECT_STREQ(k2.c_str(), "X");  // C
    EXPECT_NE(CleSuivante(Index, k1.data()), 0u);
    EXPECT_STREQ(k1.c_str(), "C");
    EXPECT_EQ(CloseCtFile(Index + 1, LectureSeule), NumeroInvalide);  // a key is closed with its index
}

TEST_F(MagasinTest, DuplicateAndMissingKeysLeaveTheIndexAsItWas) {
    Cree();
    const Position p = Ajoute("UN", "un");
    const Position q = NewRecord(Donnees);
    const std::string un = Cle("UN", LongueurCle), deux = Cle("DEUX", LongueurCle);
    EXPECT_EQ(AddRecordKey(Index, un.data(), q, 0), CleExistante);
    EXPECT_EQ(Erreur(), CleExistante);
    EXPECT_EQ(CleEgale(Index, un.data()), p);
    EXPECT_EQ(DeleteRecordKey(Index, deux.data(), p), CleAbsente);
    EXPECT_EQ(DeleteRecordKey(Index, un.data(), q), CleAbsente);  // the key leads elsewhere
    EXPECT_EQ(CleEgale(Index, un.data()), p);
    EXPECT_EQ(DeleteRecordKey(Index, un.data(), p), 0);
    EXPECT_EQ(CleEgale(Index, un.data()), 0u);
    // Keys given in rising order with the hint, and one out of order.
    for (const char* k : {"B", "C", "D", "A"}) EXPECT_EQ(AddRecordKey(Index, Cle(k, LongueurCle).data(), q, 1), 0);
    EXPECT_EQ(AddRecordKey(Index, Cle("D", LongueurCle).data(), q, 1), CleExistante);
    Ferme();
    Ouvre();
    EXPECT_EQ(Parcours(Index, PremiereCle, CleSuivante), (std::vector<std::string>{"A", "B", "C", "D"}));
}

TEST_F(MagasinTest, VariableRecordsOfEveryLength) {
    ASSERT_EQ(CreateDataFile(Donnees, Chemin("V.DAT").c_str(), 0, 4096, Partage | Variable), 0);
    std::vector<std::string> textes{"", "x", std::string(300, 'r'), std::string(200000, 'g')};
    textes[3][12345] = '\0';  // the bytes are opaque
    std::vector<Position> positions;
    for (const std::string& t : textes) {
        const Position p = NouvelleFicheVariable(Donnees, static_cast<uint32_t>(t.size()));
        ASSERT_NE(p, 0u);
        ASSERT_EQ(EcritFicheVariable(Donnees, p, t.data(), static_cast<uint32_t>(t.size())), 0);
        positions.push_back(p);
    }
    // A record may be rewritten with another length.
    ASSERT_EQ(EcritFicheVariable(Donnees, positions[1], "plus long", 9), 0);
    textes[1] = "plus long";
    ASSERT_EQ(CloseCtFile(Donnees, Partage | Variable), 0);

    // The kind comes from the file: a plain read-only open reads it.
    ASSERT_EQ(OpenCtFile(Donnees, Chemin("V.DAT").c_str(), LectureSeule), 0);
    for (size_t i = 0; i < textes.size(); ++i) {
        const uint32_t n = magasin::LongueurFiche(Donnees, positions[i]);
        ASSERT_EQ(n, textes[i].size());
        std::string lu(n + 5, '?');
        ASSERT_EQ(LitFicheVariable(Donnees, positions[i], lu.data(), n + 5), 0);
        EXPECT_EQ(lu, textes[i] + std::string(5, '\0'));
        // Read in place, the same bytes without a copy.
        std::string_view vue;
        ASSERT_EQ(VueFiche(Donnees, positions[i], vue), 0);
        EXPECT_EQ(vue, textes[i]);
    }
    std::string_view vue;
    EXPECT_EQ(VueFiche(Donnees, 999, vue), PositionInvalide);
    std::string court(10, '\0');
    EXPECT_EQ(LitFicheVariable(Donnees, positions[2], court.data(), 10), Lecture);
    EXPECT_EQ(NouvelleFicheVariable(Donnees, 4), 0u);
    EXPECT_EQ(Erreur(), Ecriture);  // read-only binding
    ASSERT_EQ(CloseCtFile(Donnees, LectureSeule), 0);

    ASSERT_EQ(CreateDataFile(Donnees, Chemin("F.DAT").c_str(), 8, 4096, Partage), 0);
    EXPECT_EQ(NouvelleFicheVariable(Donnees, 4), 0u);
    EXPECT_EQ(Erreur(), GenreIncompatible);
    // In place only through a read-only binding: a writer's bytes move.
    const Position p = NewRecord(Donnees);
    EXPECT_EQ(VueFiche(Donnees, p, vue), NumeroInvalide);
}

TEST_F(MagasinTest, FreedPositionsAreGivenAgainAcrossOpens) {
    Cree();
    const Position a = Ajoute("A", "a"), b = Ajoute("B", "b"), c = Ajoute("C", "c");
    EXPECT_EQ(LibereFiche(Donnees, b), 0);
    std::string fiche(LongueurFiche, '\0');
    EXPECT_EQ(LitFiche(Donnees, b, fiche.data()), PositionInvalide);
    EXPECT_EQ(LibereFiche(Donnees, b), PositionInvalide);
    EXPECT_EQ(WriteRecordData(Donnees, b, fiche.data()), PositionInvalide);
    Ferme();
    Ouvre("T", Exclusif);
    EXPECT_EQ(NewRecord(Donnees), b);
    EXPECT_EQ(Lit(b), "");  // a new record is zeros
    const Position d = NewRecord(Donnees);
    EXPECT_NE(d, 0u);
    for (Position p : {a, b, c}) EXPECT_NE(d, p);
    EXPECT_EQ(Lit(a), "a");
    EXPECT_EQ(Lit(c), "c");
}

TEST_F(MagasinTest, NumbersNotOpenFailWithoutEffect) {
    Cree();
    Ajoute("A", "a");
    std::string k(LongueurCle, '\0');
    EXPECT_EQ(CloseCtFile(40, 0), NumeroInvalide);
    EXPECT_EQ(CloseCtFile(-1, 0), NumeroInvalide);
    EXPECT_EQ(CloseCtFile(289, 0), NumeroInvalide);
    EXPECT_EQ(PremiereCle(40, k.data()), 0u);
    EXPECT_EQ(Erreur(), NumeroInvalide);
    EXPECT_EQ(LitFiche(40, 1, k.data()), NumeroInvalide);
    EXPECT_EQ(PremiereCle(Donnees, k.data()), 0u);  // a data number is no key
    EXPECT_EQ(Erreur(), NumeroInvalide);
    EXPECT_EQ(LitFiche(Index, 1, k.data()), NumeroInvalide);
    // Bindings in place are untouched.
    EXPECT_NE(PremiereCle(Index, k.data()), 0u);
    EXPECT_EQ(Erreur(), 0);
    Ferme();
    EXPECT_EQ(CloseCtFile(Donnees, 0), NumeroInvalide);
    EXPECT_EQ(OpenCtFile(289, Chemin("T.DAT").c_str(), LectureSeule), NumeroInvalide);
}

TEST_F(MagasinTest, ReopeningABoundNumberWorksAfterAClose) {
    Cree();
    Ajoute("A", "a");
    Ferme();
    Ouvre();
    // What OuvreTable does for a number a failed call left open.
    EXPECT_NE(OpenCtFile(Donnees, Chemin("T.DAT").c_str(), LectureSeule), 0);
    EXPECT_EQ(CloseCtFile(Donnees, LectureSeule), 0);
    EXPECT_EQ(OpenCtFile(Donnees, Chemin("T.DAT").c_str(), LectureSeule), 0);
    EXPECT_EQ(WriteRecordData(Donnees, 1, "x"), Ecriture);
    EXPECT_EQ(AddRecordKey(Index, Cle("B", LongueurCle).data(), 1, 0), Ecriture);
    // A second start without a stop closes what was left open.
    ASSERT_EQ(InitialiseMagasin(12, 20, 16), 0);
    EXPECT_EQ(CloseCtFile(Donnees, LectureSeule), NumeroInvalide);
    EXPECT_EQ(OpenCtFile(20, Chemin("T.DAT").c_str(), LectureSeule), NumeroInvalide);
    Ouvre();
    EXPECT_EQ(CleEgale(Index, Cle("A", LongueurCle).data()), 1u);
    // This process reading the file keeps itself from writing it.
    EXPECT_EQ(OpenCtFile(5, Chemin("T.DAT").c_str(), Exclusif), OuvertureImpossible);
    EXPECT_EQ(EtatIO(), TenuParCeProcessus);
}

TEST_F(MagasinTest, FilesThatAreNoTablesGiveTwelve) {
    Cree();
    Ajoute("A", "a");
    Ferme();
    const auto taille = std::filesystem::file_size(Chemin("T.DAT"));
    auto ecrit = [&](const std::string& nom, const std::string& octets) {
        std::ofstream(Chemin(nom), std::ios::binary) << octets;
    };
    std::string hasard(3 * 4096, '\0');
    for (size_t i = 0; i < hasard.size(); ++i) hasard[i] = static_cast<char>(i * 7919 % 251);
    ecrit("HASARD.DAT", hasard);
    ecrit("VIDE.DAT", "");
    std::filesystem::copy_file(Chemin("T.DAT"), Chemin("COURT.DAT"));
    std::filesystem::resize_file(Chemin("COURT.DAT"), taille - 4096);
    std::filesystem::copy_file(Chemin("T.NDX"), Chemin("INDEX.DAT"));
    std::filesystem::create_directory(Chemin("DOSSIER.DAT"));
    for (const char* nom : {"HASARD.DAT", "VIDE.DAT", "COURT.DAT", "INDEX.DAT", "DOSSIER.DAT"}) {
        for (int mode : {LectureSeule, Exclusif}) {
            EXPECT_EQ(OpenCtFile(Donnees, Chemin(nom).c_str(), mode), OuvertureImpossible) << nom;
            EXPECT_EQ(EtatIO(), FichierEtranger) << nom;
        }
    }
    EXPECT_EQ(OpenCtFile(Donnees, Chemin("ABSENT.DAT").c_str(), LectureSeule), OuvertureImpossible);
    EXPECT_EQ(EtatIO(), ENOENT);
    EXPECT_EQ(std::filesystem::file_size(Chemin("VIDE.DAT")), 0u);  // not made a database
    // The good ones still open.
    Ouvre();
}

// The state a value kept from a file is checked against, read without a
// binding: it changes with every commit and every replacement, and is the
// state a read-only open then reads.
TEST_F(MagasinTest, AFileStateIsReadWithoutBindingAndFollowsCommitsAndReplacements) {
    const std::string donnees = Chemin("T.DAT");
    EXPECT_EQ(EtatChemin(donnees), EtatLecture{});  // no file yet
    EXPECT_EQ(EtatChemin(""), EtatLecture{});
    Cree();
    Ajoute("A", "un");
    Ferme();
    const EtatLecture premier = EtatChemin(donnees);
    EXPECT_NE(premier, EtatLecture{});
    Ouvre();
    EXPECT_EQ(EtatFichier(Donnees), premier);
    Ferme();
    EXPECT_EQ(EtatChemin(donnees), premier);  // nothing written since

    Ouvre("T", Exclusif);
    Ajoute("B", "deux");
    Ferme();
    const EtatLecture deuxieme = EtatChemin(donnees);
    EXPECT_NE(deuxieme, premier);
    Ouvre();
    EXPECT_EQ(EtatFichier(Donnees), deuxieme);
    Ferme();

    Cree("N");
    Ferme();
    MarqueRemplace(donnees.c_str());
    FermeFichiersInactifs();  // Windows renames nothing over a file held open
    std::filesystem::rename(Chemin("N.DAT"), donnees);
    const EtatLecture remplace = EtatChemin(donnees);
    EXPECT_NE(remplace.fichier, deuxieme.fichier);
}

TEST_F(MagasinTest, AReplacedFileIsSeenAtTheNextOpen) {
    Cree();
    Ajoute("A", "ancienne");
    Ferme();
    Ouvre();
    EXPECT_EQ(Lit(CleEgale(Index, Cle("A", LongueurCle).data())), "ancienne");
    Ferme();
    // A second pair built aside and renamed over the first, as tools do.
    Cree("N");
    Ajoute("A", "nouvelle");
    Ferme();
    MarqueRemplace(Chemin("T.DAT").c_str());
    MarqueRemplace(Chemin("T.NDX").c_str());
    FermeFichiersInactifs();  // Windows renames nothing over a file held open
    std::filesystem::rename(Chemin("N.DAT"), Chemin("T.DAT"));
    std::filesystem::rename(Chemin("N.NDX"), Chemin("T.NDX"));
    Ouvre();
    EXPECT_EQ(Lit(CleEgale(Index, Cle("A", LongueurCle).data())), "nouvelle");
    Ferme();

    // A whole directory swapped for another, as a base is rebuilt.
    std::filesystem::create_directory(Chemin("neuve"));
    std::filesystem::create_directory(Chemin("base"));
    FermeFichiersInactifs();
    std::filesystem::rename(Chemin("T.DAT"), Chemin("base/T.DAT"));
    std::filesystem::rename(Chemin("T.NDX"), Chemin("base/T.NDX"));
    Ouvre("base/T");
    Ferme();
    Cree("neuve/T");
    Ajoute("A", "refaite");
    Ferme();
    MarqueRemplaceDossier(Chemin("base").c_str());
    FermeFichiersInactifs();
    std::filesystem::rename(Chemin("base"), Chemin("ancienne"));
    std::filesystem::rename(Chemin("neuve"), Chemin("base"));
    std::filesystem::remove_all(Chemin("ancienne"));
    Ouvre("base/T");
    EXPECT_EQ(Lit(CleEgale(Index, Cle("A", LongueurCle).data())), "refaite");
    Ferme();

    // Unannounced, a replacement is still seen within a second.
    Cree("M");
    Ajoute("A", "derniere");
    Ferme();
    if (!systeme::RemplacableOuvert) FermeFichiersInactifs();
    std::filesystem::rename(Chemin("M.DAT"), Chemin("T.DAT"));
    std::filesystem::rename(Chemin("M.NDX"), Chemin("T.NDX"));
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    Ouvre();
    EXPECT_EQ(Lit(CleEgale(Index, Cle("A", LongueurCle).data())), "derniere");
}

TEST_F(MagasinTest, ExclusiveWritesBeyondOneTransactionAllStay) {
    Cree();
    std::map<std::string, Position> attendu;
    for (int i = 0; i < 25000; ++i) {
        const std::string k = "K" + std::to_string(100000 + i);
        attendu[k] = Ajoute(k, k);
    }
    Ferme();
    Ouvre();
    std::string k(LongueurCle, '\0');
    auto it = attendu.begin();
    for (Position p = PremiereCle(Index, k.data()); p; p = CleSuivante(Index, k.data()), ++it) {
        ASSERT_NE(it, attendu.end());
        ASSERT_EQ(k.c_str(), it->first);
        ASSERT_EQ(p, it->second);
    }
    EXPECT_EQ(it, attendu.end());
    EXPECT_EQ(Lit(attendu["K124999"]), "K124999");
}

TEST_F(MagasinTest, RebuildRestoresKeysFromTheRecords) {
    Cree();
    const Position a = Ajoute("ALPHA", "ALPHA");
    Ajoute("BETA", "BETA");
    Ajoute("GAMMA", "GAMMA");
    EXPECT_EQ(DeleteRecordKey(Index, Cle("BETA", LongueurCle).data(), 0), 0);
    Ferme();
    DescriptionFichier d;
    d.cheminDonnees = Chemin("T.DAT");
    d.cheminIndex = Chemin("T.NDX");
    d.longueurFiche = LongueurFiche;
    // First key: the first 12 bytes; second: bytes 1-2 then byte 0.
    d.cles = {{{{0, 12}}}, {{{1, 2}, {0, 1}}}};
    ASSERT_EQ(ReconstruitFichier(d), 0);
    Ouvre();
    EXPECT_EQ(Parcours(Index, PremiereCle, CleSuivante), (std::vector<std::string>{"ALPHA", "BETA", "GAMMA"}));
    std::string k(3, '\0');
    EXPECT_EQ(CleEgale(Index + 1, "LPA"), a);
    EXPECT_NE(PremiereCle(Index + 1, k.data()), 0u);
    EXPECT_EQ(k, "AMG");
    // Held here, the files can't be rebuilt.
    EXPECT_EQ(ReconstruitFichier(d), OuvertureImpossible);
    Ferme();

    // Records giving the same key: the first stays, the rebuild says so.
    // Byte 4: "A" for ALPHA and GAMMA, NUL for BETA.
    d.cles = {{{{4, 1}}}};
    EXPECT_EQ(ReconstruitFichier(d), CleExistante);
    ASSERT_EQ(OpenCtFile(Index, Chemin("T.NDX").c_str(), LectureSeule), 0);
    EXPECT_EQ(CleEgale(Index, "A"), a);
    EXPECT_NE(CleEgale(Index, "\0"), 0u);
    EXPECT_EQ(CleSuivante(Index, k.data()), a);
    EXPECT_EQ(CleSuivante(Index, k.data()), 0u);
}

using essai::MagasinBorneTest;

TEST_F(MagasinBorneTest, AWriterGrowsItsMapAcrossTransactionsAndTheFileEndsAtItsPages) {
    CreeVide();
    // Some 24 MB: many times the first room, through many transactions.
    ASSERT_EQ(Remplit(0, 6000, 4000, Exclusif), 0);
    ASSERT_EQ(Remplit(6000, 100, 4000, Partage), 0);  // shared writers grow theirs too
    Ouvre("V", LectureSeule);
    for (int i : {0, 2999, 5999, 6000, 6099}) EXPECT_TRUE(LitNumero(Donnees, Index, i) == Contenu(i, 4000)) << i;
    Ferme();
    // The pages in use end the file: no room left behind, and nothing cut off.
    const auto taille = std::filesystem::file_size(Chemin("V.DAT"));
    EXPECT_EQ(taille % 4096, 0u);
    EXPECT_LT(taille, 6100u * 4096 * 2);
    EXPECT_GE(taille, 6100u * 4000);
}

TEST_F(MagasinBorneTest, ATruncatedFileOpenedForWritingIsNotLengthened) {
    CreeVide();
    ASSERT_EQ(Remplit(0, 200, 4000, Exclusif), 0);
    const auto taille = std::filesystem::file_size(Chemin("V.DAT"));
    std::filesystem::copy_file(Chemin("V.DAT"), Chemin("COURT.DAT"));
    std::filesystem::resize_file(Chemin("COURT.DAT"), taille - 8192);
    EXPECT_EQ(OpenCtFile(Donnees, Chemin("COURT.DAT").c_str(), Exclusif | Variable), OuvertureImpossible);
    EXPECT_EQ(EtatIO(), FichierEtranger);
    EXPECT_EQ(std::filesystem::file_size(Chemin("COURT.DAT")), taille - 8192);
}

}  // namespace
}  // namespace vdx::magasin
