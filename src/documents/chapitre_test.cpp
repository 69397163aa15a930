#include "documents/chapitre.h"

#include <gtest/gtest.h>

#include "store/fiche.h"

namespace vdx {
namespace {

// A chapter record: the header of 32 lengths, then the fields.
std::string Corps(std::initializer_list<std::string_view> champs) {
    std::string corps(128, '\0');
    size_t i = 0;
    for (std::string_view c : champs) {
        EcritMot(corps, 4 * i++, static_cast<int32_t>(c.size()));
        corps += c;
    }
    return corps;
}

TEST(ExtraitChapitre, ReadsTheRtfFieldOfAChapterAsText) {
    const std::string corps = Corps({"Indications", "{\\rtf1 Douleurs\\par fi\\'e8vre}", "", "",
                                     "Posologie", "{\\rtf1 Un comprim\\'e9}"});
    EXPECT_EQ(ExtraitChapitre(1, corps, false), "Douleurs\r\nfi\xE8vre");
    EXPECT_EQ(ExtraitChapitre(3, corps, false), "Un comprim\xE9");
    // Raw reads take the field by its own number.
    EXPECT_EQ(ExtraitChapitre(5, corps, true), "Posologie");
    EXPECT_EQ(ExtraitChapitre(2, corps, true), "{\\rtf1 Douleurs\\par fi\\'e8vre}");
    // An empty chapter gives the converted fixed text.
    EXPECT_EQ(ExtraitChapitre(2, corps, false), "");
    EXPECT_EQ(ExtraitChapitre(2, corps, false, "{\\rtf1 rien}"), "rien");
}

TEST(ExtraitChapitre, ARecordOutOfShapeGivesWhatItHolds) {
    // Shorter than its header: no field at all.
    EXPECT_EQ(ExtraitChapitre(1, "", false), "");
    EXPECT_EQ(ExtraitChapitre(1, std::string(20, 'x'), true), "");
    // A length past the record's end: what the record holds of the field,
    // and nothing of the fields behind it.
    std::string menteur = Corps({"court", "x"});
    EcritMot(menteur, 0, 1 << 30);
    EXPECT_EQ(ExtraitChapitre(1, menteur, true), "courtx");
    EXPECT_EQ(ExtraitChapitre(2, menteur, true), "");
    EXPECT_EQ(ExtraitChapitre(0, menteur, true), "");
    EXPECT_EQ(ExtraitChapitre(40, menteur, true), "");
}

TEST(ExtraitChapitre, TheNoticeVariantSaysWhenAFieldIsEmpty) {
    const std::string corps = Corps({"", "", "<p>Notice</p>"});
    EXPECT_EQ(ExtraitChapitreNotice(3, corps), "<p>Notice</p>");
    EXPECT_EQ(ExtraitChapitreNotice(1, corps), "Information provisoirement indisponible.");
}

}  // namespace
}  // namespace vdx
