#include "store/pliage.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace vdx {
namespace {

// Texts are code page 1252 bytes: é is \xE9, ç \xE7.

TEST(Pliage, MajusculeSansAccentKnowsOnlyTheLettersOfItsTable) {
    EXPECT_EQ(MajusculeSansAccent("\xE9t\xE9 \xC0 l'\xEEle, 1/2"), "ETE A L'ILE, 1/2");
    // ç, á, ñ, ã are not in the table: left as they are.
    EXPECT_EQ(MajusculeSansAccent("gar\xE7on \xE1\xF1\xE3"), "GAR\xE7ON \xE1\xF1\xE3");
    EXPECT_EQ(MajusculeSansAccent('\xFC'), 'U');
    EXPECT_EQ(MajusculeSansAccent('\xF9'), 'U');
    EXPECT_EQ(MajusculeSansAccent('\xFA'), '\xFA');
}

TEST(Pliage, KeyFoldKeepsCapitalsAndDigitsAndClosesUp) {
    EXPECT_EQ(PlieCle("\xC9ph\xE9" "drine"), "EPHEDRINE");
    EXPECT_EQ(PlieCle("Gar\xE7on"), "GARON");
    EXPECT_EQ(PlieCle("GLA\xC7ON"), "GLAON");
    EXPECT_EQ(PlieCle("vit. B12 / 500-mg"), "VITB12500MG");
    EXPECT_EQ(PlieCle("vit. B12 / 500-mg", true), "VITB12/500MG");
    EXPECT_EQ(PlieMotCle("anti-inflammatoire / 2", false), "ANTI-INFLAMMATOIRE2");
    // A text ends at its NUL, as in a key buffer.
    EXPECT_EQ(PlieCle(std::string("ab\0cd", 5)), "AB");
}

TEST(Pliage, LabelFoldSqueezesOnlyTheFirstFiveBytesOfTheSource) {
    EXPECT_EQ(PlieCleLibelle("A/B C"), "A/BC");
    EXPECT_EQ(PlieCleLibelle("A/B C", true), "A/BC");
    EXPECT_EQ(PlieCleLibelle("ASPIRINE 500 MG"), "ASPIRINE 500 MG");
    // Positions count bytes of the source: the blank at 5 stays, the points
    // at 1 and 3 go, although the result is shorter by then.
    EXPECT_EQ(PlieCleLibelle("a.b.c d\xE9j\xE0 \xE7" "a"), "ABC DEJA \xE7" "A");
    EXPECT_EQ(PlieCleLibelle("\xE7" "a va"), "AVA");
}

// Every byte, against the accent table as French usage has it: the table's
// bytes give their letter, and no other byte from 128 on is mended.
TEST(Pliage, EveryByteInAndOutOfTheAccentTable) {
    const std::map<char, const char*> table = {
        {'A', "\xC0\xC1\xC2\xC4\xE0\xE2\xE4"}, {'E', "\xC8\xC9\xCA\xCB\xE8\xE9\xEA\xEB"},
        {'I', "\xCC\xCD\xCE\xCF\xEE\xEF"},     {'O', "\xD2\xD3\xD4\xD6\xF4\xF6"},
        {'U', "\xD9\xDA\xDB\xDC\xF9\xFB\xFC"},
    };
    std::map<unsigned char, char> lettres;
    for (const auto& [lettre, octets] : table)
        for (const char* o = octets; *o; ++o) lettres[static_cast<unsigned char>(*o)] = lettre;
    ASSERT_EQ(lettres.size(), 34u);
    for (int i = 1; i < 256; ++i) {
        const char b = static_cast<char>(i);
        SCOPED_TRACE(i);
        const auto lettre = lettres.find(static_cast<unsigned char>(i));
        const bool minuscule = b >= 'a' && b <= 'z';
        const bool cle = lettre != lettres.end() || minuscule || (b >= 'A' && b <= 'Z') || (b >= '0' && b <= '9');
        const std::string plie = lettre != lettres.end() ? std::string(1, lettre->second)
                                 : minuscule             ? std::string(1, static_cast<char>(b - 'a' + 'A'))
                                                         : std::string(1, b);
        EXPECT_EQ(std::string(1, MajusculeSansAccent(b)), plie);
        EXPECT_EQ(MajusculeSansAccent(std::string(1, b)), plie);
        EXPECT_EQ(PlieCle(std::string(1, b)), cle ? plie : "");
        EXPECT_EQ(PlieCle(std::string(1, b), true), cle || b == '/' ? plie : "");
        EXPECT_EQ(PlieMotCle(std::string(1, b)), cle || b == '-' ? plie : "");
        // The head of a label is squeezed, its tail only folded.
        EXPECT_EQ(PlieCleLibelle(std::string(1, b)), cle || b == '/' ? plie : "");
        EXPECT_EQ(PlieCleLibelle("ABCDE" + std::string(1, b)), "ABCDE" + plie);
    }
    // Letters left out of the table on purpose: unchanged, and dropped from keys.
    for (const char* hors : {"\xE7", "\xC7", "\xE1", "\xEC", "\xED", "\xF2", "\xF3", "\xF5", "\xFA", "\xE3", "\xE5",
                             "\xF1", "\xC3", "\xC5", "\xD1", "\xD5"}) {
        EXPECT_EQ(MajusculeSansAccent(hors), hors);
        EXPECT_EQ(PlieCle(hors), "");
    }
}

}  // namespace
}  // namespace vdx
