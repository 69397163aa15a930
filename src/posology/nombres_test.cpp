#include "posology/nombres.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace vdx {
namespace {

using Cas = std::vector<std::pair<float, std::string>>;

void Verifie(const Cas& cas) {
    for (const auto& [valeur, mots] : cas) EXPECT_EQ(NombreEnLettres(valeur), mots) << valeur;
}

TEST(NombreEnLettres, UpToAHundred) {
    Verifie({{0, "z\xE9ro"}, {1, " un(e)"}, {2, " deux"}, {16, " seize"}, {17, " dix sept"},
             {19, " dix neuf"}, {20, " vingt"}, {21, " vingt et un(e)"}, {22, " vingt deux"},
             {31, " trente et un(e)"}, {45, " quarante cinq"}, {61, " soixante et un(e)"},
             {69, " soixante neuf"}, {70, " soixante dix"}, {71, " soixante et onze"},
             {77, " soixante dix sept"}, {80, " quatre vingt"}, {81, " quatre vingt un(e)"},
             {90, " quatre vingt dix"}, {91, " quatre vingt onze"}, {99, " quatre vingt dix neuf"}});
}

TEST(NombreEnLettres, HundredsAndThousands) {
    // "cents" only when nothing follows; never "un mille".
    Verifie({{100, " cent"}, {101, " cent un(e)"}, {180, " cent quatre vingt"}, {200, " deux cents"},
             {201, " deux cent un(e)"}, {1000, " mille"}, {1001, " mille un(e)"}, {1100, " mille cent"},
             {2000, " deux mille"}, {21000, " vingt et un mille"}, {80000, " quatre vingt mille"},
             {200000, " deux cent mille"}, {201000, " deux cent un mille"},
             {300200, " trois cent mille deux cents"},
             {999999, " neuf cent quatre vingt dix neuf mille neuf cent quatre vingt dix neuf"}});
    // From a million the thousands count hundreds; past the words, the figures.
    Verifie({{1000000, " dix cent mille"},
             {1234567, " douze cent trente quatre mille cinq cent soixante sept"},
             {12345678, " 12345678"}});
}

TEST(NombreEnLettres, DecimalsFollowVirgule) {
    Verifie({{0.5f, "z\xE9ro virgule cinq"}, {0.05f, "z\xE9ro virgule z\xE9ro cinq"},
             {0.001f, "z\xE9ro virgule z\xE9ro z\xE9ro un"}, {0.7f, "z\xE9ro virgule sept"},
             {1.5f, " un(e) virgule cinq"}, {1.01f, " un(e) virgule z\xE9ro un"},
             {21.75f, " vingt et un(e) virgule soixante quinze"}, {3.125f, " trois virgule cent vingt cinq"}});
    // A zero behind the first non-zero decimal is dropped.
    Verifie({{1.101f, " un(e) virgule onze"}, {0.505f, "z\xE9ro virgule cinquante cinq"}});
    // 123.45 is held as 123.449997...: three decimals cut, not rounded.
    Verifie({{123.45f, " cent vingt trois virgule quatre cent quarante neuf"}});
    // Below a thousandth nothing is told, not even the zero.
    Verifie({{2.0004f, " deux"}, {0.0004f, ""}});
}

TEST(NombreEnLettres, SignIsNotTold) {
    Verifie({{-21, " vingt et un(e)"}, {-0.5f, "z\xE9ro virgule cinq"}, {-0.0f, "z\xE9ro"}});
}

TEST(NombreEnLettres, FamilyMembers) {
    std::string sortie = "vieux";
    EXPECT_EQ(NombreEnLettres(201, sortie), 1);
    EXPECT_EQ(sortie, " deux cent un(e)");

    EXPECT_EQ(NombreEnLettresSansGenre(201, sortie), 1);
    EXPECT_EQ(sortie, " deux cent un");
    NombreEnLettresSansGenre(21.5f, sortie);
    EXPECT_EQ(sortie, " vingt et un virgule cinq");
    NombreEnLettresSansGenre(0, sortie);
    EXPECT_EQ(sortie, "z\xE9ro");
}

TEST(CentainesEnLettres, AppendsAndKnowsThePartBeforeMille) {
    std::string texte = "x";
    for (auto [n, avantMille] : {std::pair{0, false}, {1, true}, {1, false}, {400, true}, {400, false}})
        CentainesEnLettres(n, texte, avantMille);
    EXPECT_EQ(texte, "x un quatre cent quatre cents");
}

TEST(FiguresAndWords, BothForms) {
    // Words first keep their leading blank.
    EXPECT_EQ(MotsPuisChiffres(2.5f, "2\xBD"), " deux virgule cinq (2\xBD)");
    EXPECT_EQ(MotsPuisChiffres(1, "1"), " un(e) (1)");
    EXPECT_EQ(MotsPuisChiffres(0, "0"), "z\xE9ro (0)");

    // Figures first: the words lose their first character...
    EXPECT_EQ(ChiffresPuisMots(2.5f, "2\xBD"), "2\xBD (deux virgule cinq)");
    EXPECT_EQ(ChiffresPuisMots(21, "21"), "21 (vingt et un(e))");
    // ...whatever it is.
    EXPECT_EQ(ChiffresPuisMots(0.5f, "\xBD"), "\xBD (\xE9ro virgule cinq)");
    EXPECT_EQ(ChiffresPuisMots(0.0004f, "0.0004"), "0.0004 ()");
}

}  // namespace
}  // namespace vdx
