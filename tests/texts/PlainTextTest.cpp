#include "texts/PlainText.h"

#include "briefing/TextBounds.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(SingleLine, HasNoControlCharacters) {
    EXPECT_EQ(singleLine(u"a\nb\tc\u0007d\u2028e\u2029f"_s), u"a b c d e f"_s);
    EXPECT_EQ(singleLine(u"Q&A <b> · 5m 🎉"_s), u"Q&A <b> · 5m 🎉"_s);
    EXPECT_EQ(singleLine(QString(QChar(u'\0')) + u'x'), u" x"_s);
}

TEST(SingleLine, HasNoEscapesForATerminal) {
    EXPECT_EQ(singleLine(u"\u001b[31mred\u009b0m\u0008\u007f"_s), u" [31mred 0m  "_s);
}

namespace {

struct Turn {
    const char* name;
    QString text;
    QString line;
};

class SingleLineTurns : public testing::TestWithParam<Turn> {};

} // namespace

TEST_P(SingleLineTurns, NoOtherTextsAround) {
    EXPECT_EQ(singleLine(GetParam().text), GetParam().line);
    EXPECT_EQ(singleLine(GetParam().line), GetParam().line) << "twice is as good as once";
}

INSTANTIATE_TEST_SUITE_P(
    All, SingleLineTurns,
    testing::Values(
        Turn{
            "None", u"פגישה 4, Room 4\u200f\u200e\u061c"_s, u"פגישה 4, Room 4\u200f\u200e\u061c"_s},
        Turn{"OpenOverride", u"photo\u202egpj.exe"_s, u"photogpj.exe"_s},
        Turn{"OpenEmbedding", u"a\u202ab\u202bc\u202dd"_s, u"abcd"_s},
        Turn{"OpenIsolate", u"a\u2066b\u2067c\u2068d"_s, u"abcd"_s},
        Turn{"Closed", u"a\u202eb\u202cc \u2067d\u2069e"_s, u"a\u202eb\u202cc \u2067d\u2069e"_s},
        Turn{"StrayClosings", u"a\u202cb\u2069c"_s, u"abc"_s},
        Turn{"ClosedOnceOpenedTwice", u"\u202e\u202ea\u202cb"_s, u"\u202ea\u202cb"_s},
        Turn{"ClosedTwiceOpenedOnce", u"\u202ea\u202c\u202cb"_s, u"\u202ea\u202cb"_s},
        Turn{"Within", u"\u2067a\u202eb\u202cc\u2069"_s, u"\u2067a\u202eb\u202cc\u2069"_s},
        Turn{"EndsWithTheIsolate", u"\u2067a\u202eb\u2069c"_s, u"\u2067a\u202eb\u2069c"_s},
        Turn{"ClosesNothingOutside", u"\u202ea\u2067b\u202cc\u2069d"_s, u"a\u2067bc\u2069d"_s},
        Turn{"NoEmbeddingEndsAnIsolate", u"\u2067a\u202cb"_s, u"ab"_s},
        Turn{"NoIsolateEndsAnEmbedding", u"\u202ea\u2069b"_s, u"ab"_s},
        Turn{"AcrossALineBreak", u"\u202ea\nb\u202cc"_s, u"\u202ea b\u202cc"_s},
        Turn{"Deep", QString(300, QChar(0x202e)) + u"a"_s, u"a"_s}),
    [](const auto& tested) { return tested.param.name; });

TEST(SingleLine, EndsWhereNobodyReadsOn) {
    const QString text = u"word "_s.repeated(1000);
    EXPECT_EQ(singleLine(text), text.first(longestLine - 1) + u'…');
    // What is opened before the cut is closed behind it.
    const QString turned = u"\u202e"_s + text + u"\u202c"_s;
    EXPECT_EQ(singleLine(turned), text.first(longestLine - 2) + u'…');
}

TEST(PlainLines, EndWhereNobodyReadsOn) {
    const QString text = u"a word\n"_s.repeated(1000);
    EXPECT_EQ(plainLines(text), text.first(longestPassage - 1) + u'…');
    EXPECT_EQ(escapedForMarkup(text), plainLines(text));
    EXPECT_EQ(plainLines(QString(5000, u'x')).size(), longestPassage) << "also of a single line";
}

TEST(PlainLines, AreEachASingleLine) {
    EXPECT_EQ(plainLines(u"a\tb\r\n\u202ec\nd\u202c\u001be\n"_s), u"a b \nc\nd e\n"_s);
    EXPECT_EQ(plainLines({}), QString());
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

TEST(TextShortening, PicturesStayWholeBehindLettersOfAnyScript) {
    for (const QString& letter : {u"ก"_s, u"क"_s, u"ཀ"_s, u"က"_s, u"ក"_s}) {
        const QString fifteen = letter.repeated(15);
        EXPECT_EQ(shortTitle(fifteen + u"😀😀"_s), fifteen + u"😀…"_s) << letter.toStdString();
    }
}

TEST(TextShortening, ASpaceWithAMarkIsNoSpace) {
    EXPECT_EQ(shortTitle(u"12345678901234 \u030167890"_s), u"12345678901234 \u03016…"_s);
}

TEST(TextShortening, BrokenTextIsHarmless) {
    const QString half(QChar(0xd83d));
    EXPECT_EQ(shortTitle(half.repeated(20)), half.repeated(16) + u'…');
}

TEST(TextShortening, AHeapOfMarksIsCutWithinACharacter) {
    const QString heap(100'000, u'\u0301');
    EXPECT_EQ(shortTitle(heap), heap.first(511) + u'…');
    EXPECT_EQ(shortTitle(u"Standup"_s + heap), (u"Standup"_s + heap).first(511) + u'…');
    EXPECT_EQ(shortTitle(u"Standup with everybody"_s + heap), u"Standup with…"_s);
}

TEST(TextShortening, LooksAtNothingBehindIt) {
    for (const QString& unit :
         {u"ประชุม"_s, u"क्षत्रिय "_s, u"👩‍👩‍👧"_s, u"a\u0301"_s, u"word "_s}) {
        const QString text = unit.repeated(2000);
        for (const std::size_t maximum : {16U, 48U, 400U, 600U}) {
            const QString cut = shortened(text, maximum);
            EXPECT_EQ(cut, shortened(text.first(longestPassage + 1), maximum));
            EXPECT_LE(cut.size(), longestPassage);
            EXPECT_TRUE(cut.endsWith(u'…'));
        }
    }
}

TEST(TextShortening, ManyUnitsToACharacterAreCutSooner) {
    const QString family = u"👩‍👩‍👧"_s; // eight units
    EXPECT_EQ(shortened(family.repeated(500), 400), family.repeated(249) + u'…');
    EXPECT_EQ(shortened(family.repeated(249), 400), family.repeated(249));
}
