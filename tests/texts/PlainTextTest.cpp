#include "texts/PlainText.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(SingleLine, HasNoControlCharacters) {
    EXPECT_EQ(singleLine(u"a\nb\tc\u0007d\u2028e\u2029f"_s), u"a b c d e f"_s);
    EXPECT_EQ(singleLine(u"Q&A <b> · 5m 🎉"_s), u"Q&A <b> · 5m 🎉"_s);
    EXPECT_EQ(singleLine(QString(QChar(u'\0')) + u'x'), u" x"_s);
}

TEST(EscapedForMarkup, MarkupIsShownLiterally) {
    EXPECT_EQ(escapedForMarkup(u"<b>Q&A</b>"_s), u"&lt;b&gt;Q&amp;A&lt;/b&gt;"_s);
    EXPECT_EQ(escapedForMarkup(u"&lt;"_s), u"&amp;lt;"_s);
    EXPECT_EQ(escapedForMarkup(u"\"it's\""_s), u"\"it's\""_s);
}

TEST(EscapedForMarkup, EscapingKeepsLinesApart) {
    EXPECT_EQ(escapedForMarkup(u"a\nb\rc"_s), u"a\nb c"_s);
    EXPECT_EQ(escapedForMarkup({}), QString());
}

TEST(TextShortening, SixteenCharactersStay) {
    EXPECT_EQ(shortTitle(u"Standup"_s), u"Standup"_s);
    EXPECT_EQ(shortTitle(u"1234567890123456"_s), u"1234567890123456"_s);
    EXPECT_EQ(shortTitle(u" \t1234567890123456\t "_s), u"1234567890123456"_s);
    EXPECT_EQ(shortTitle(u""_s), u""_s);
    EXPECT_EQ(shortTitle(u" \t "_s), u""_s);
}

TEST(TextShortening, LongerOnesAreCutThere) {
    EXPECT_EQ(shortTitle(u"12345678901234567"_s), u"1234567890123456…"_s);
    EXPECT_EQ(shortTitle(u"Quarterly planning review"_s), u"Quarterly planni…"_s);
}

TEST(TextShortening, OrBeforeASpaceAmongTheLastFive) {
    EXPECT_EQ(shortTitle(u"Daily standup call"_s), u"Daily standup…"_s);
    EXPECT_EQ(shortTitle(u"12345678901 34567890"_s), u"12345678901…"_s);
    EXPECT_EQ(shortTitle(u"1234567890 234567890"_s), u"1234567890 23456…"_s);
    EXPECT_EQ(shortTitle(u"123456789012345 7890"_s), u"123456789012345…"_s);
    EXPECT_EQ(shortTitle(u"1234567890123456 890"_s), u"1234567890123456…"_s);
    EXPECT_EQ(shortTitle(u"12345678901 34 67890"_s), u"12345678901 34…"_s);
}

TEST(TextShortening, OnlySpacesBreakWords) {
    EXPECT_EQ(shortTitle(u"12345678901234-67890"_s), u"12345678901234-6…"_s);
    EXPECT_EQ(shortTitle(u"12345678901234\u00a067890"_s), u"12345678901234\u00a06…"_s);
    EXPECT_EQ(shortTitle(u"12345678901234\t67890"_s), u"12345678901234\t6…"_s);
}

TEST(TextShortening, TheCutIsTrimmedAgain) {
    EXPECT_EQ(shortTitle(u"12345678901   567890"_s), u"12345678901…"_s);
    EXPECT_EQ(shortTitle(u"12345678901\t 4567890"_s), u"12345678901…"_s);
    EXPECT_EQ(shortTitle(u"123456789012345\t7890"_s), u"123456789012345…"_s);
}

/// What a reader takes for one character, however many code units it has.
class OneCharacter : public testing::TestWithParam<const char16_t*> {};

TEST_P(OneCharacter, CountsOnce) {
    const auto one = QString::fromUtf16(GetParam());
    EXPECT_EQ(shortTitle(one.repeated(16)), one.repeated(16));
    EXPECT_EQ(shortTitle(one.repeated(17)), one.repeated(16) + u'…');
    // Between letters, which it must not swallow.
    EXPECT_EQ(shortTitle(u"12345678901234"_s + one + u"67"_s), u"12345678901234"_s + one + u"6…"_s);
}

INSTANTIATE_TEST_SUITE_P(
    TextShortening, OneCharacter,
    testing::Values(
        u"é", u"e\u0301", u"e\u0301\u0323", u"한", u"\u1112\u1161\u11ab", u"नि", u"😀", u"👍🏽",
        u"👩‍👩‍👧", u"👨🏽‍💻", u"❤️", u"❤️‍🔥", u"🏳️‍🌈", u"🇩🇪",
        u"1️⃣", u"🏴󠁧󠁢󠁥󠁮󠁧󠁿"));

TEST(TextShortening, FlagsInARowArePairedFromTheLeft) {
    EXPECT_EQ(
        shortTitle(u"x🇩🇪🇫🇷🇮🇹🇪🇸🇵🇹🇳🇱🇧🇪🇱🇺🇦🇹🇨🇭🇩🇰🇸🇪🇳🇴🇫🇮🇮🇸🇮🇪"_s), u"x🇩🇪🇫🇷🇮🇹🇪🇸🇵🇹🇳🇱🇧🇪🇱🇺🇦🇹🇨🇭🇩🇰🇸🇪🇳🇴🇫🇮🇮🇸…"_s);
}

TEST(TextShortening, ASpaceWithAMarkIsNoSpace) {
    EXPECT_EQ(shortTitle(u"12345678901234 \u030167890"_s), u"12345678901234 \u03016…"_s);
}

TEST(TextShortening, BrokenTextIsHarmless) {
    const QString half(QChar(0xd83d));
    EXPECT_EQ(shortTitle(half.repeated(20)), half.repeated(16) + u'…');
    EXPECT_EQ(shortTitle(QString(100'000, u'\u0301')).size(), 100'000);
}
