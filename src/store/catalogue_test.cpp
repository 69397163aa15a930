#include "store/catalogue.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vdx {
namespace {

TEST(Catalogue, EachNumberBelongsToOneTableAndKeysFollowTheirIndex) {
    std::set<int> vus;
    for (const Table& t : Catalogue()) {
        ASSERT_EQ(TableNommee(t.nom), &t);
        EXPECT_EQ(std::string(t.fichierDonnees), std::string(t.nom) + ".DAT");
        EXPECT_EQ(std::string(t.fichierIndex), std::string(t.nom) + ".NDX");
        // data n, index n + 1, further keys n + 2, n + 3: one run of numbers.
        for (int n = t.donnees; n < t.donnees + 1 + t.nombreCles(); ++n) {
            EXPECT_TRUE(vus.insert(n).second) << t.nom << " " << n;
            EXPECT_EQ(TableDuNumero(n), &t) << n;
        }
        EXPECT_EQ(t.cle(t.nombreCles() - 1), t.donnees + t.nombreCles());
        EXPECT_LT(t.cle(t.nombreCles() - 1), NombreNumeros);
    }
    EXPECT_EQ(*vus.rbegin(), NombreNumeros - 1);
    // Gaps stay unbound.
    for (int n : {105, 153, 257, 261, -1, NombreNumeros}) EXPECT_EQ(TableDuNumero(n), nullptr) << n;
    EXPECT_EQ(TableNommee("VDXINCONNU"), nullptr);
}

TEST(Catalogue, DoctorsBaseHasItsFourPairs) {
    for (const char* nom : {"PRO", "PATH", "POSO", "TEXU"}) {
        const Table* t = TableNommee(nom);
        ASSERT_NE(t, nullptr) << nom;
        EXPECT_EQ(t->emplacement, Emplacement::Medecin);
        EXPECT_EQ(t->genre, std::string(nom) == "TEXU" ? Genre::Variable : Genre::Fixe);
    }
    EXPECT_EQ(TableNommee("PRO")->donnees, 279);
    EXPECT_EQ(TableNommee("TEXU")->index(), 288);
}

TEST(Catalogue, UpdateNamesKeepTheirExceptions) {
    EXPECT_EQ(NomMaj(0), "VDXPRO_DAT");
    EXPECT_EQ(NomMaj(1), "VDXPRO_NDX");
    EXPECT_EQ(NomMaj(2), "VDXPRO_NDX1");
    EXPECT_EQ(NomMaj(83), "VDXVAMM_NDX2");
    EXPECT_EQ(NomMaj(108), "VDXVEXC_NDX1");
    EXPECT_EQ(NomMaj(5), "VDXCLA_NDX");
    EXPECT_EQ(NomMaj(11), "VDXFAM_DAT:");
    EXPECT_EQ(NomMaj(35), "VDXIDFOR_NDX");
    EXPECT_EQ(NomMaj(152), "VDXWDICO1_NDX");
    EXPECT_EQ(NomMaj(214), "VDXZNOTG_NDX");
    for (int n : {105, 153, 215, 279, -1, 400}) EXPECT_EQ(NomMaj(n), "") << n;
}

}  // namespace
}  // namespace vdx
