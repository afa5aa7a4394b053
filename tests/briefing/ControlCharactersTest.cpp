#include "briefing/ControlCharacters.h"

#include <QString>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(ControlCharacters, EndLinesOrSteerWhatPrintsThem) {
    for (const QChar character : u"\t\n\r\u001b\u0007\u007f\u0085\u009b\u2028\u2029"_s)
        EXPECT_TRUE(isControlCharacter(character)) << uint(character.unicode());
    EXPECT_TRUE(isControlCharacter(QChar(0)));
    for (const QChar character : u" a~\u00a0\u00ad\u0301\u200b\u200d\u200f\u202e\u2067"_s)
        EXPECT_FALSE(isControlCharacter(character)) << uint(character.unicode());
}

TEST(BidiControls, OpenAndCloseStretches) {
    for (const QChar character : u"\u202a\u202b\u202d\u202e"_s)
        EXPECT_EQ(bidiControl(character), BidiControl::OpensEmbedding) << uint(character.unicode());
    for (const QChar character : u"\u2066\u2067\u2068"_s)
        EXPECT_EQ(bidiControl(character), BidiControl::OpensIsolate) << uint(character.unicode());
    EXPECT_EQ(bidiControl(u'\u202c'), BidiControl::ClosesEmbedding);
    EXPECT_EQ(bidiControl(u'\u2069'), BidiControl::ClosesIsolate);
    for (const QChar character :
         u"aא\u200e\u200f\u061c \n"_s) // marks turn nothing beyond themselves
        EXPECT_EQ(bidiControl(character), BidiControl::None) << uint(character.unicode());
}
