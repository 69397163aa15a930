// The characters of the pages: the table's entities, what passes as it
// stands, line ends only when asked, the attribute's two characters.
#include "documents/html.h"

#include <gtest/gtest.h>

namespace vdx {
namespace {

TEST(EncodeHtml, TheTableAndNothingElse) {
    EXPECT_EQ(EncodeHtml("\xDC\xC8\xE5\xE9\xB5g", false), "&uuml;&ecirc;&aring;&eacute;&micro;g");
    // Stored markup, letters the table lacks (É, œ) and line ends pass.
    EXPECT_EQ(EncodeHtml("<b>\xC9t\x9C</b> & x\r\ny", false), "<b>\xC9t\x9C</b> & x\r\ny");
    EXPECT_EQ(EncodeHtml("a\r\nb\rc\n\r\n", true), "a<BR>b\rc\n<BR>");
}

TEST(AttributHtml, QuotesAndAmpersands) {
    EXPECT_EQ(AttributHtml("C:\\a \"b\"&c.css"), "C:\\a &quot;b&quot;&amp;c.css");
}

}  // namespace
}  // namespace vdx
