#include "briefing/CssColor.h"

#include <QString>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

CssColor bytes(int red, int green, int blue) {
    return {red / 255.0, green / 255.0, blue / 255.0};
}

} // namespace

TEST(CssColor, TakesSixDigitsInAnyMixOfCase) {
    const CssColor dodgerBlue = bytes(30, 144, 255);
    EXPECT_EQ(parseCssColor(u"#1E90FF"), dodgerBlue);
    EXPECT_EQ(parseCssColor(u"1e90ff"), dodgerBlue);
    EXPECT_EQ(parseCssColor(u"#1e90FF"), dodgerBlue);
    EXPECT_EQ(parseCssColor(u"#000000"), bytes(0, 0, 0));
    EXPECT_EQ(parseCssColor(u"ffffff"), bytes(255, 255, 255));
    EXPECT_EQ(parseCssColor(u"#010203"), bytes(1, 2, 3));
}

TEST(CssColor, IgnoresBlanksAroundTheCode) {
    EXPECT_EQ(parseCssColor(u"  #1e90FF "), bytes(30, 144, 255));
    EXPECT_EQ(parseCssColor(u"\t 1E90FF\t"), bytes(30, 144, 255));
}

TEST(CssColor, OtherWhiteSpaceIsPartOfTheCode) {
    EXPECT_EQ(parseCssColor(u"#1E90FF\n"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"\u00A0#1E90FF"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"# 1E90FF"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"#1E 0FF"), std::nullopt);
}

TEST(CssColor, NeedsExactlySixDigits) {
    EXPECT_EQ(parseCssColor(u"#FFF"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"#abc"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"#FF000080"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"#12345"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"1234567"), std::nullopt);
    EXPECT_EQ(parseCssColor(u""), std::nullopt);
    EXPECT_EQ(parseCssColor(u" \t"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"#"), std::nullopt);
    EXPECT_EQ(parseCssColor(QString(10'000, u'F')), std::nullopt);
}

TEST(CssColor, RefusesOtherCharacters) {
    EXPECT_EQ(parseCssColor(u"#GG0000"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"#0000gg"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"##1E90F"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"0x1E90"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"tomato"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"１２３４５６"), std::nullopt);
}

TEST(CssColor, ToleratesAPlusBeforeFiveDigits) {
    EXPECT_EQ(parseCssColor(u"+1E90F"), bytes(0x01, 0xE9, 0x0F));
    EXPECT_EQ(parseCssColor(u"#+0000F"), bytes(0, 0, 15));
    EXPECT_EQ(parseCssColor(u"++1E90"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"-1E90F"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"+1E90FF"), std::nullopt);
    EXPECT_EQ(parseCssColor(u"1E90F+"), std::nullopt);
}
