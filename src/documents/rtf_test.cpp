#include "documents/rtf.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/hote.h"
#include "platform/notices.h"
#include "session/session.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

struct Cas {
    std::string rtf, texte;
};

void Verifie(const std::vector<Cas>& cas) {
    for (const Cas& c : cas) {
        SCOPED_TRACE(c.rtf);
        EXPECT_EQ(RtfVersTexte(c.rtf), c.texte);
    }
}

TEST(RtfVersTexte, KnownControlWordsAndPlainCharacters) {
    Verifie({
        {"a\\par b", "a\r\nb"},
        {"a\\pard b", "a\r\n b"},
        {"a\\par }xb", "ab"},                       // closes a group: no line end, one more goes
        {"a\\linexyz", "az"},                       // two characters go with it
        {"\\tab x", "\tx"},                         // a blank behind a TAB is dropped
        {"\\tab   x", "\tx"},
        {"a\t b", "a\tb"},
        {"\\tab  \r\n\\par }Suite", "\t Suite"},
        {"\\tab \r\n\\par }Suite", "\tSuite"},
        {"\\tab \r\n\\parXYZ", "\tZ"},              // compared only up to "par"
        {"\\~", "\xA0"},
        {"pardon", "\r\non"},
        {"l1\r\nl2{x}", "l1l2x"},
    });
}

TEST(RtfVersTexte, UnknownControlWordsAreSkippedToTheNextBlank) {
    Verifie({
        {"{\\rtf1\\ansi Bonjour}", "Bonjour"},
        {"a\\PAR b", "ab"},                         // case counts
        {"a\\par\\b gras", "agras"},                // "\par" without its blank is unknown
        {"a\\b1\\par suite", "a\r\nsuite"},         // a known word ends the skip and acts
        {"\\f0\\'e9t\\'e9 x", "\xE9t\xE9 x"},
    });
}

TEST(RtfVersTexte, CharacterEscapes) {
    const std::string connus = "e0e2e7e8e9eaebeeeff4f6f9fbb0b2b3b5b7c0c8c99c85";
    for (size_t i = 0; i < connus.size(); i += 2) {
        const std::string hexa = connus.substr(i, 2);
        EXPECT_EQ(RtfVersTexte("\\'" + hexa), std::string(1, static_cast<char>(std::stoi(hexa, nullptr, 16))))
            << hexa;
    }
    Verifie({
        {"caf\\'e9 ", "caf\xE9 "},
        {"x\\'e4y\\'fcz\\'9dw\\'bf!", "xyzw!"},     // consumed without a trace
        {"x\\'E9 y", "xy"},                         // capitals are unknown
        {"x\\'86ab y", "xy"},
        {"x\\'d0ab\\'e0 y", "x\xE0 y"},
    });
}

TEST(RtfVersTexte, GroupsAndTheSkipDepth) {
    Verifie({
        {"{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red0;}\\pard Texte", "\r\n Texte"},
        {"\\b{gras} fin", "fin"},
        {"a\\b}}{{ c", "ac"},                       // the depth goes below 0 and stays there
        {"a\\b}{{ c} d", "ad"},
    });
}

TEST(RtfVersTexte, TheTextEndsInsideAControlWord) {
    Verifie({
        {"Texte\\motinconnu", "Texte"},
        {"a\\ta", "a"},
        {"a\\'e", "a"},
        {"a\\line", "a"},
        {"a\\", "a"},
        {"Avant \\fonttbl{\\f0 Arial; reste sans fin", "Avant "},
        {"x\\b{{{{", "x"},
    });
}

TEST(RtfVersTexte, EmptyTextsAndTheFirstNul) {
    EXPECT_EQ(RtfVersTexte(""), "");
    EXPECT_EQ(RtfVersTexte(std::string("ab\0cd", 5)), "ab");
}

TEST(RtfVersTexte, StopsAtTheBufferBound) {
    const size_t max = TailleTamponRtf - 1;
    EXPECT_EQ(RtfVersTexte(std::string(max, 'a')).size(), max);
    EXPECT_EQ(RtfVersTexte(std::string(max + 1, 'a')).size(), max);
    EXPECT_EQ(RtfVersTexte(std::string(3 * TailleTamponRtf, 'a')).size(), max);
    // A line end that straddles the bound keeps its first byte.
    const std::string texte = RtfVersTexte(std::string(max - 1, 'a') + "\\par b");
    EXPECT_EQ(texte.size(), max);
    EXPECT_EQ(texte.back(), '\r');
}

// Any text, the worst included, gives a text no longer than itself: the
// working buffer is allocated once on that ground.
TEST(RtfVersTexte, AnyTextGivesANoLongerText) {
    const std::string alphabet = "\\\\'{}  \r\nparditblne~9c85E";
    std::mt19937 alea(7);
    for (int n = 0; n < 5000; ++n) {
        std::string rtf(alea() % 24, ' ');
        for (char& c : rtf) c = alphabet[alea() % alphabet.size()];
        EXPECT_LE(RtfVersTexte(rtf).size(), rtf.size()) << rtf;
    }
}

class RtfToTexte : public ::testing::Test {
protected:
    void SetUp() override { RemetSession(); }
    void TearDown() override {
        hote::Libere(&sortie);
        RemetSession();
    }

    BSTR sortie = nullptr;
    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
};

TEST_F(RtfToTexte, StoresBytesWithoutConnectionOrDelivery) {
    session().ChainesUnicode = 1;
    ASSERT_EQ(::Rtf_To_Texte("{\\rtf1 caf\\'e9}", &sortie), 1);
    EXPECT_EQ(hote::Octets(sortie), "caf\xE9");
    EXPECT_EQ(session().ChainesUnicode, 1);

    session().ModeSortie = ModeMemoire;
    session().ChaineMemoire = "avant";
    ASSERT_EQ(::Rtf_To_Texte("\\tab x", &sortie), 1);
    EXPECT_EQ(hote::Octets(sortie), "\tx");
    EXPECT_EQ(session().ChaineMemoire, "avant");

    ASSERT_EQ(::Rtf_To_Texte("", &sortie), 1);
    EXPECT_EQ(hote::Octets(sortie), "");
}

TEST_F(RtfToTexte, NullPointersAreInternalErrors) {
    ASSERT_TRUE(hote::RangeOctets(&sortie, "ancien"));
    EXPECT_EQ(::Rtf_To_Texte(nullptr, &sortie), VDX_ERREUR_INTERNE);
    EXPECT_NE(sortie, nullptr);
    EXPECT_EQ(hote::Octets(sortie), "");  // emptied before anything else in mode 0
    EXPECT_EQ(::Rtf_To_Texte("x", nullptr), VDX_ERREUR_INTERNE);
    ASSERT_EQ(notices.boites.size(), 2u);
    EXPECT_EQ(notices.boites[0].texte, "Une erreur interne est survenue lors de l'appel de la fonction Rtf_To_Texte !");
    EXPECT_EQ(notices.boites[0].titre, "Erreur DLL");
}

}  // namespace
}  // namespace vdx
