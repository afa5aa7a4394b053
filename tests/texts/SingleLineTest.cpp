#include "texts/SingleLine.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(SingleLine, HasNoControlCharacters) {
    EXPECT_EQ(singleLine(u"a\nb\tc\u0007d\u2028e"_s), u"a b c d e"_s);
    EXPECT_EQ(singleLine(u"Q&A <b> · 5m 🎉"_s), u"Q&A <b> · 5m 🎉"_s);
    EXPECT_EQ(singleLine(QString(QChar(u'\0')) + u'x'), u" x"_s);
}
