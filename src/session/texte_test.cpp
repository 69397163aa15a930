#include "session/texte.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace vdx {
namespace {

std::string Plat(std::initializer_list<std::optional<std::string_view>> champs) {
    std::string plat;
    for (auto c : champs) AjouteChamp(c, plat);
    return plat;
}

TEST(AjouteChamp, EmptyFieldsAreMarkedUntilAFieldFollows) {
    EXPECT_EQ(Plat({"A", "B"}), "A@B");
    EXPECT_EQ(Plat({""}), "#");
    EXPECT_EQ(Plat({std::nullopt}), "#");
    EXPECT_EQ(Plat({"", "B"}), "@B");
    EXPECT_EQ(Plat({"A", ""}), "A@");
    EXPECT_EQ(Plat({"A", std::nullopt, "C"}), "A@@C");
    // A field ending with "#" gives that character to the next separator.
    EXPECT_EQ(Plat({"A#", "B"}), "A@B");
}

TEST(AjouteChamp, RowsStartAfterALineEnd) {
    std::string plat = "A@B";
    AjouteTexte(FinDeLigne, plat);
    AjouteChamp("", plat);
    AjouteChamp("D", plat);
    EXPECT_EQ(plat, "A@B\r\n@D");

    std::string suite = "A\r\n";
    AjouteChamp("B", suite, false);
    EXPECT_EQ(suite, "A\r\n@B");
}

TEST(ExtraitChamp, WalksAListOnRowsOrFields) {
    const std::string texte = "3400000@3400001\r\n3400002";
    size_t position = 0;
    std::vector<std::string> champs;
    while (auto champ = ExtraitChamp(texte, position, 0)) champs.push_back(*champ);
    EXPECT_EQ(champs, (std::vector<std::string>{"3400000", "3400001", "3400002"}));

    position = 0;
    champs.clear();
    while (auto champ = ExtraitChamp(texte, position, 1)) champs.push_back(*champ);
    EXPECT_EQ(champs, (std::vector<std::string>{"3400000", "3400001\r\n3400002"}));

    position = 0;
    EXPECT_EQ(ExtraitChamp(texte, position, 7), "");
    EXPECT_EQ(position, 1u);

    position = 0;
    EXPECT_FALSE(ExtraitChamp("", position, 0));
}

TEST(ChampSuivant, TellsFieldsRowEndsAndEmptyFields) {
    const std::string texte = "A@B\r\n@C";
    size_t position = 0;
    std::string tampon;
    std::vector<std::pair<int, std::string>> vu;
    for (int i = 0; i < 8; ++i) {
        const int r = ChampSuivant(texte, position, tampon);
        vu.emplace_back(r, tampon);
        if (r == TexteFini) break;
    }
    const std::vector<std::pair<int, std::string>> attendu = {
        {ChampLu, "A"}, {ChampLu, "B"}, {LigneFinie, ""}, {ChampVide, ""}, {ChampLu, "C"}, {TexteFini, ""}};
    EXPECT_EQ(vu, attendu);
    EXPECT_EQ(position, texte.size() + 1);
    EXPECT_EQ(ChampSuivant(texte, position, tampon), TexteFini);
    EXPECT_EQ(position, texte.size() + 1);
}

std::string Nombre(float v, bool fractions = false) {
    std::string tampon = "inchange";
    TexteNombre(v, tampon, fractions);
    return tampon;
}

TEST(TexteNombre, WritesQuantitiesWithoutTrailingZeros) {
    EXPECT_EQ(Nombre(0), "0");
    EXPECT_EQ(Nombre(2.5f), "2.5");
    EXPECT_EQ(Nombre(0.33f), "0.33");
    EXPECT_EQ(Nombre(1000), "1000");
    EXPECT_EQ(Nombre(1), "1");
    EXPECT_EQ(Nombre(12.345f), "12.34");  // cut, not rounded
    EXPECT_EQ(Nombre(0.125f), "0.125");
    EXPECT_EQ(Nombre(0.1f), "0.1");
    EXPECT_EQ(Nombre(0.05f), "0.05");
    EXPECT_EQ(Nombre(0.055f), "0.055");
    EXPECT_EQ(Nombre(0.002f), "0.002");
    EXPECT_EQ(Nombre(0.00003f), "0.00003");
    EXPECT_EQ(Nombre(-3.5f), "3.5");
    EXPECT_EQ(Nombre(0.0000001f), "inchange");
    EXPECT_EQ(Nombre(NAN), "inchange");
    EXPECT_EQ(Nombre(-INFINITY), "inchange");
}

TEST(TexteNombre, WritesHalvesAndQuartersAsSigns) {
    EXPECT_EQ(Nombre(2.5f, true), "2\xBD");
    EXPECT_EQ(Nombre(2.25f, true), "2\xBC");
    EXPECT_EQ(Nombre(3.75f, true), "3\xBE");
    EXPECT_EQ(Nombre(0.5f, true), "\xBD");
    EXPECT_EQ(Nombre(0.25f, true), "\xBC");
    EXPECT_EQ(Nombre(0.75f, true), "\xBE");
    EXPECT_EQ(Nombre(2.35f, true), "2.35");
}

}  // namespace
}  // namespace vdx
