#include "texts/CharacterFinder.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

QStringList charactersOf(QStringView text) {
    QStringList characters;
    CharacterFinder finder(text);
    qsizetype begin = 0;
    for (qsizetype end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        characters += text.sliced(begin, end - begin).toString();
        begin = end;
    }
    return characters;
}

/// A letter with all that belongs to it, of a script that the toolkit has rules of its own for, and
/// of some that it has none for.
class LettersOfAScript : public testing::TestWithParam<const char16_t*> {};

} // namespace

TEST(CharacterFinder, AnEmptyTextHasNone) {
    EXPECT_EQ(charactersOf({}), QStringList());
}

TEST_P(LettersOfAScript, LeaveWhatIsBetweenThemWhole) {
    const auto letter = QString::fromUtf16(GetParam());
    for (const QString& sign :
         {u"😀"_s, u"👩‍👩‍👧"_s, u"👍🏽"_s, u"🇹🇭"_s, u"1️⃣"_s, u"❤️"_s, u"é"_s, u" "_s,
          u"🏴󠁧󠁢󠁥󠁮󠁧󠁿"_s}) {
        const QStringList expected{letter, letter, sign, sign, letter};
        EXPECT_EQ(charactersOf(expected.join(QString())), expected) << sign.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    CharacterFinder, LettersOfAScript,
    testing::Values(
        u"ก", u"ปี่", u"กำ", u"ກ", u"ཀ", u"က", u"ក", u"ខ្មែ", u"क", u"नि", u"বা", u"கி", u"ක", u"한",
        u"漢", u"か\u3099", u"ｶﾞ", u"ع", u"é", u"a"));

TEST(CharacterFinder, SignsBelongToOneAnother) {
    EXPECT_EQ(
        charactersOf(u"ก❤️‍🔥क्‍ष\r\n"_s),
        (QStringList{u"ก"_s, u"❤️‍🔥"_s, u"क्‍ष"_s, u"\r\n"_s}));
    EXPECT_EQ(charactersOf(u"🇹🇭🇮🇳ก🇳"_s), (QStringList{u"🇹🇭"_s, u"🇮🇳"_s, u"ก"_s, u"🇳"_s}));
}

TEST(CharacterFinder, MarksStayWithWhatTheyMark) {
    EXPECT_EQ(
        charactersOf(u"\u0301a\u0301 \u0301"_s),
        (QStringList{u"\u0301"_s, u"a\u0301"_s, u" \u0301"_s}));
    EXPECT_EQ(charactersOf(u"कः😀\u0301"_s), (QStringList{u"कः"_s, u"😀\u0301"_s}));
}

TEST(CharacterFinder, PairsAmongLettersStayTogether) {
    EXPECT_EQ(charactersOf(u"ก𝐀ก"_s), (QStringList{u"ก"_s, u"𝐀"_s, u"ก"_s}));
    EXPECT_EQ(charactersOf(u"ก\U000E0100ก"_s), (QStringList{u"ก"_s, u"\U000E0100"_s, u"ก"_s}));
    // Each of the two letters of the flag, then the mark that cannot belong to it.
    EXPECT_EQ(charactersOf(u"🇩🇪\u0E35"_s).join(u'|'), u"🇩|🇪|\u0E35"_s);
}

TEST(CharacterFinder, HalvesOfPairsAreCharacters) {
    const QChar high(0xD83D);
    const QChar low(0xDE00);
    EXPECT_EQ(charactersOf(QString(low) + u'ก' + high), (QStringList{low, u"ก"_s, high}));
}
