#include "texts/StatusTexts.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {
namespace {

TEST(StatusTexts, MarkupIsShownLiterally) {
    EXPECT_EQ(escapedForMarkup(u"<b>Q&A</b>"_s), u"&lt;b&gt;Q&amp;A&lt;/b&gt;"_s);
    EXPECT_EQ(escapedForMarkup(u"&lt;"_s), u"&amp;lt;"_s);
    EXPECT_EQ(escapedForMarkup(u"\"it's\""_s), u"\"it's\""_s);
}

TEST(StatusTexts, EscapingKeepsLinesApart) {
    EXPECT_EQ(escapedForMarkup(u"a\nb\rc"_s), u"a\nb c"_s);
    EXPECT_EQ(escapedForMarkup({}), QString());
}

} // namespace
} // namespace lumora
