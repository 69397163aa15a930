// For the store's tests: a temporary directory holding both the tables and
// the shared records, and a few helpers to build small tables.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

#include "store/magasin.h"
#include "store/fixture.h"
#include "store/partage.h"

namespace vdx::magasin::essai {

// A key of `longueur` bytes: the text, NUL padded.
inline std::string Cle(std::string_view texte, size_t longueur) {
    std::string k(longueur, '\0');
    std::memcpy(k.data(), texte.data(), std::min(texte.size(), longueur));
    return k;
}

inline int16_t Erreur() { return GlobalesMagasin()->ErreurMagasin; }
inline int16_t EtatIO() { return GlobalesMagasin()->EtatIOMagasin; }

class MagasinTest : public ::testing::Test {
public:
    static constexpr int Donnees = 10, Index = 11;
    static constexpr uint32_t LongueurFiche = 32;
    static constexpr int LongueurCle = 12;

protected:

    void SetUp() override {
        TermineMagasin();  // nothing cached from another test's directory
        dossier_ = vdx::essai::DossierTemporaire("vdx32-magasin-XXXXXX");
        std::filesystem::create_directory(dossier_ + "/partage");
        FixeDossierPartage(dossier_ + "/partage");
        ASSERT_EQ(InitialiseMagasin(867, 289, 16), 0);
    }
    void TearDown() override {
        TermineMagasin();
        FixeDossierPartage("");
        std::filesystem::remove_all(dossier_);
    }

    std::string Chemin(const std::string& nom) const { return dossier_ + "/" + nom; }

    // Creates T.DAT on Donnees and T.NDX on Index with one key, left open in `mode`.
    void Cree(const std::string& nom = "T", int mode = Exclusif) {
        ASSERT_EQ(CreateDataFile(Donnees, Chemin(nom + ".DAT").c_str(), LongueurFiche, 4096, mode), 0);
        ASSERT_EQ(CreateIndexFile(Index, Chemin(nom + ".NDX").c_str(), LongueurCle, 0, 0, 0, 4096, mode), 0);
    }
    void Ferme() {
        EXPECT_EQ(CloseCtFile(Index, 0), 0);
        EXPECT_EQ(CloseCtFile(Donnees, 0), 0);
    }
    void Ouvre(const std::string& nom = "T", int mode = LectureSeule) {
        ASSERT_EQ(OpenCtFile(Donnees, Chemin(nom + ".DAT").c_str(), mode), 0) << EtatIO();
        ASSERT_EQ(OpenCtFile(Index, Chemin(nom + ".NDX").c_str(), mode), 0) << EtatIO();
    }

    // A record whose bytes start with `texte`, under key `cle`.
    Position Ajoute(std::string_view cle, std::string_view texte, int index = Index) {
        const Position p = NewRecord(Donnees);
        EXPECT_NE(p, 0u);
        const std::string fiche = Cle(texte, LongueurFiche);
        EXPECT_EQ(WriteRecordData(Donnees, p, fiche.data()), 0);
        EXPECT_EQ(AddRecordKey(index, Cle(cle, LongueurCle).data(), p, 0), 0);
        return p;
    }
    std::string Lit(Position p) {
        std::string fiche(LongueurFiche, '\0');
        EXPECT_EQ(LitFiche(Donnees, p, fiche.data()), 0);
        return fiche.c_str();
    }

    std::string dossier_;
};

// Where a map stops at its file's end (as on Windows), a writer grows its
// map between transactions and cuts the file back to its pages; a reader's
// map is the file as it stood, and an outgrown map is never read past.
class MagasinBorneTest : public MagasinTest {
protected:
    void SetUp() override {
        avant_ = CartesBornees(true);
        MagasinTest::SetUp();
    }
    void TearDown() override {
        MagasinTest::TearDown();
        CartesBornees(avant_);
    }
    void CreeVide() {
        ASSERT_EQ(CreateDataFile(Donnees, Chemin("V.DAT").c_str(), 0, 4096, Exclusif | Variable), 0);
        ASSERT_EQ(CreateIndexFile(Index, Chemin("V.NDX").c_str(), LongueurCle, 0, 0, 0, 4096, Exclusif), 0);
        Ferme();
    }
    // Writes variable records of `n` bytes to V, keyed by their number from
    // `premier`; 0, or the first failure's error (a forked child reports it).
    int Remplit(int premier, int nombre, uint32_t n, int mode) {
        if (OpenCtFile(Donnees, Chemin("V.DAT").c_str(), mode | Variable) != 0) return Erreur();
        if (OpenCtFile(Index, Chemin("V.NDX").c_str(), mode) != 0) return Erreur();
        for (int i = premier; i < premier + nombre; ++i) {
            const std::string fiche = Contenu(i, n);
            const Position p = NouvelleFicheVariable(Donnees, n);
            if (p == 0 || EcritFicheVariable(Donnees, p, fiche.data(), n) != 0 ||
                AddRecordKey(Index, Cle(std::to_string(i), LongueurCle).data(), p, 0) != 0)
                return Erreur();
        }
        if (CloseCtFile(Index, 0) != 0 || CloseCtFile(Donnees, 0) != 0) return Erreur();
        return 0;
    }
    static std::string Contenu(int i, uint32_t n) {
        std::string fiche(n, static_cast<char>('a' + i % 26));
        std::memcpy(fiche.data(), &i, sizeof i);
        return fiche;
    }
    // Record `i` read through numbers `donnees` and `index`; "" if not found.
    static std::string LitNumero(int donnees, int index, int i) {
        const Position p = CleEgale(index, Cle(std::to_string(i), LongueurCle).data());
        std::string fiche;
        if (p == 0 || LitFicheEntiere(donnees, p, fiche) != 0) return "";
        return fiche;
    }

private:
    bool avant_ = false;
};

}  // namespace vdx::magasin::essai
