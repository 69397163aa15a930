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

}  // namespace vdx::magasin::essai
