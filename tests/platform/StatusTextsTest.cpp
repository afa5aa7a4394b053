#include "platform/linux/StatusTexts.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {
namespace {

TEST(StatusTexts, OneLineHasNoControlCharacters) {
    EXPECT_EQ(singleLine(u"a\nb\tc\u0007d\u2028e"_s), u"a b c d e"_s);
    EXPECT_EQ(singleLine(u"Q&A <b> · 5m 🎉"_s), u"Q&A <b> · 5m 🎉"_s);
    EXPECT_EQ(singleLine(QString(QChar(u'\0')) + u'x'), u" x"_s);
}

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
