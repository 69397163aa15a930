#include "platform/codepage.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/codepage_table.h"

namespace vdx::codepage {
namespace {

std::string TousLesOctets() {
    std::string s;
    for (int i = 0; i < 256; ++i) s += static_cast<char>(i);
    return s;
}

TEST(Codepage, ChaqueOctetFaitLAllerRetour) {
    const std::string tous = TousLesOctets();
    const std::u16string large = VersUtf16(tous);
    ASSERT_EQ(large.size(), 256u);
    EXPECT_EQ(DepuisUtf16(large), tous);

    const std::string utf8 = VersUtf8(tous);
    size_t position = 999;
    const auto retour = DepuisUtf8(utf8, &position);
    ASSERT_TRUE(retour.has_value()) << "faute en " << position;
    EXPECT_EQ(*retour, tous);

    // Each byte alone, so that one fault can't hide behind another.
    for (int i = 0; i < 256; ++i) {
        const std::string octet(1, static_cast<char>(i));
        EXPECT_EQ(DepuisUtf16(VersUtf16(octet)), octet) << i;
        EXPECT_EQ(DepuisUtf8(VersUtf8(octet)), octet) << i;
    }
}

TEST(Codepage, TableDeWindows) {
    const std::u16string large = VersUtf16(TousLesOctets());
    EXPECT_EQ(large[0x41], u'A');
    EXPECT_EQ(large[0x80], u'\u20AC');
    EXPECT_EQ(large[0x85], u'\u2026');
    EXPECT_EQ(large[0x8C], u'\u0152');
    EXPECT_EQ(large[0x92], u'\u2019');
    EXPECT_EQ(large[0x99], u'\u2122');
    EXPECT_EQ(large[0x9F], u'\u0178');
    EXPECT_EQ(large[0xA0], u'\u00A0');
    EXPECT_EQ(large[0xE9], u'\u00E9');
    EXPECT_EQ(large[0xFF], u'\u00FF');
    // The five bytes Windows-1252 leaves undefined, as MultiByteToWideChar gives them.
    for (int octet : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) EXPECT_EQ(large[octet], octet);
    EXPECT_EQ(VersUtf8("caf\xE9 \x80"), "caf\xC3\xA9 \xE2\x82\xAC");
}

TEST(Codepage, Utf16HorsDuJeu) {
    EXPECT_EQ(DepuisUtf16(u"a\u0100b"), "a?b");
    EXPECT_EQ(DepuisUtf16(u"\u0080"), "?");  // a C1 control that 0x80 (the euro) is not
    EXPECT_EQ(DepuisUtf16(u"x\U0001F600y"), "x?y");  // a pair is one character
    EXPECT_EQ(DepuisUtf16(std::u16string(u"\xD800z", 2)), "?z");
}

TEST(Codepage, Utf8RefuseAvecLaPosition) {
    struct Cas {
        std::string texte;
        size_t position;
    };
    const Cas cas[] = {
        {"ab\xC4\x80z", 2},          // U+0100: not in code page 1252
        {"\xC2\x80", 0},             // U+0080 neither
        {"ok\xF0\x9F\x98\x80", 2},   // beyond the basic plane
        {"abc\xC3", 3},              // cut short
        {"\xC3(", 0},                // bad continuation
        {"a\xC0\xAF", 1},            // overlong
        {"\xE0\x80\xAF", 0},         // overlong on three bytes
        {"\xED\xA0\x80", 0},         // a surrogate
        {"\xF4\x90\x80\x80", 0},     // beyond U+10FFFF
        {"x\xFF", 1},
        {"\xE9t\xE9", 0},            // code page 1252 given as UTF-8
    };
    for (const Cas& c : cas) {
        size_t position = 999;
        EXPECT_FALSE(DepuisUtf8(c.texte, &position).has_value()) << c.texte;
        EXPECT_EQ(position, c.position) << c.texte;
    }
    EXPECT_FALSE(DepuisUtf8("\xC4\x80").has_value());  // no position asked for
    EXPECT_EQ(DepuisUtf8("\xE2\x82\xAC \xC5\x93uvre \xC2\x81"), "\x80 \x9Cuvre \x81");
    EXPECT_EQ(DepuisUtf8(""), "");
    EXPECT_EQ(DepuisUtf8(std::string("a\0b", 3)), std::string("a\0b", 3));
}

// The wide conversions of the system (Windows) or of the library (Linux)
// against the table, byte for byte: every byte, every UTF-16 unit alone and
// in a text, pairs and lone surrogates.
TEST(Codepage, LesConversionsLargesSuiventLaTable) {
    const std::u16string large = VersUtf16(TousLesOctets());
    ASSERT_EQ(large.size(), 256u);
    for (int i = 0; i < 256; ++i) EXPECT_EQ(large[i], CaractereDe(static_cast<unsigned char>(i))) << i;

    std::u16string unites;
    std::string attendu;
    for (char32_t c = 1; c < 0x10000; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        const int octet = OctetDe(c);
        const char un = octet < 0 ? '?' : static_cast<char>(octet);
        const std::u16string seul(1, static_cast<char16_t>(c));
        ASSERT_EQ(DepuisUtf16(seul), std::string(1, un)) << std::hex << static_cast<uint32_t>(c);
        unites += static_cast<char16_t>(c);
        attendu += un;
    }
    EXPECT_EQ(DepuisUtf16(unites), attendu);
    EXPECT_EQ(DepuisUtf16(u"a\U0001F600b\U00010000"), "a?b?");
    EXPECT_EQ(DepuisUtf16(std::u16string(u"\xDC00\xD800", 2)), "??");
    EXPECT_EQ(DepuisUtf16(std::u16string(u"\0a", 2)), std::string("\0a", 2));
    EXPECT_EQ(VersUtf16(std::string("\0\x80", 2)), std::u16string(u"\0\u20AC", 2));
    EXPECT_EQ(VersUtf16(""), u"");
    EXPECT_EQ(DepuisUtf16(u""), "");
}

}  // namespace
}  // namespace vdx::codepage
