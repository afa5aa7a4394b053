#include "briefing/TextBounds.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(Beginning, OfAShortTextIsAllOfIt) {
    EXPECT_EQ(beginning({}, 10), QString());
    EXPECT_EQ(beginning(u"1234567890"_s, 10), u"1234567890"_s);
    EXPECT_EQ(beginning(u"12345678🎉"_s, 10), u"12345678🎉"_s);
}

TEST(Beginning, OfALongerOneLeavesRoomForTheEllipsis) {
    EXPECT_EQ(beginning(u"12345678901"_s, 10), u"123456789…"_s);
    EXPECT_EQ(beginning(beginning(u"12345678901"_s, 10), 10), u"123456789…"_s);
    EXPECT_EQ(beginning(u"12"_s, 1), u"…"_s);
}

TEST(Beginning, EndsWithAWholeCharacter) {
    EXPECT_EQ(beginning(u"12345678🎉🎉"_s, 10), u"12345678…"_s);
    EXPECT_EQ(beginning(u"1234567🎉🎉"_s, 10), u"1234567🎉…"_s);
    EXPECT_EQ(beginning(u"12345678e\u0301\u0323xyz"_s, 10), u"12345678…"_s);
    EXPECT_EQ(beginning(u"123👩‍👩‍👧 family"_s, 10), u"123…"_s);
    EXPECT_EQ(beginning(u"12345🇩🇪🇫🇷"_s, 12), u"12345🇩🇪…"_s);
    EXPECT_EQ(beginning(u"กกกกก🎉กก"_s, 7), u"กกกกก…"_s) << "the toolkit finds an end within";
}

TEST(Beginning, TearsAHeapOfMarks) {
    const QString heap = u"a"_s + QString(1000, QChar(0x301));
    EXPECT_EQ(beginning(heap, 500), heap.first(499) + u'…');
    const QString pairs = u"\U0001F1E9"_s + u"\U000E0100"_s.repeated(1000);
    EXPECT_EQ(beginning(pairs, 500), pairs.first(498) + u'…') << "but no pair";
}

TEST(Beginning, DependsOnNothingBehindIt) {
    const QString begin = u"ประชุม 👩‍👩‍👧 "_s.repeated(10);
    for (qsizetype longest = 2; longest < begin.size(); ++longest)
        EXPECT_EQ(beginning(begin + u"x"_s, longest), beginning(begin + u"ก🎉"_s, longest))
            << longest;
}
