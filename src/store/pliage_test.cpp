#include "store/pliage.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace vdx
