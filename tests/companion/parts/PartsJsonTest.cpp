#include "companion/parts/PartsJson.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;

namespace {

template <typename Part>
QByteArray textOf(const Part& part) {
    return QJsonDocument(toJson(part)).toJson(QJsonDocument::Compact);
}

} // namespace

TEST(PartsJson, AreReadAsTheyAreWritten) {
    const HabitsPart habits{
        1, 2, {{u"a"_s, u"Ä \"b\""_s, true, 3, 4, 5}, {u"c"_s, {}, false, 0, 1, 0}}};
    EXPECT_EQ(readHabits(textOf(habits)), habits);
    const ChoresPart chores{3, {{u"a"_s, u"b"_s, u"c"_s, 2}, {u"d"_s, u"e"_s, {}, std::nullopt}}};
    EXPECT_EQ(readChores(textOf(chores)), chores);
    for (const FocusPart& focus : {FocusPart{0.42}, FocusPart{}})
        EXPECT_EQ(readFocus(textOf(focus)), focus);
    SpendingPart spending{
        12.5,         10,  0.25, {{u"a"_s, u"b"_s, u"🛒"_s, u"#1E90FF"_s, 7.25}}, u"2025-03-04"_s,
        1741080000.5, true};
    EXPECT_EQ(readSpending(textOf(spending)), spending);
    spending.deltaFraction.reset();
    EXPECT_EQ(readSpending(textOf(spending)), spending);
}

TEST(PartsJson, TakeWhatSimplerProgramsWrite) {
    const auto habits = readHabits(R"({"done": 1.0, "total": 1, "other": [], "items":
        [{"id": "a", "name": "A", "done": true, "count": 2.0, "target": 1, "streak": 0, "x": 1}]})");
    ASSERT_TRUE(habits) << qPrintable(habits.error());
    EXPECT_EQ(habits->items.front().count, 2);
    const auto chores =
        readChores(R"({"count":1,"top":[{"id":"a","name":"A","room":"R","daysOverdue":null}]})");
    ASSERT_TRUE(chores);
    EXPECT_EQ(chores->top.front().daysOverdue, std::nullopt);
    EXPECT_EQ(readFocus(R"({"productiveShare": 1})"), FocusPart{1.0});
    EXPECT_EQ(readFocus(R"({"productiveShare": 0.5, "productiveShare": null})"), FocusPart{});
}

TEST(PartsJson, SayWhatIsWrong) {
    const auto fault = [](const auto& part) { return part ? QString() : part.error(); };
    EXPECT_EQ(fault(readHabits("")), u"There is nothing"_s);
    EXPECT_EQ(fault(readHabits("{")), u"That is no JSON"_s);
    EXPECT_EQ(fault(readHabits("[]")), u"The document must be an object"_s);
    EXPECT_EQ(fault(readHabits("{}")), u"done must be a whole number"_s);
    EXPECT_EQ(fault(readHabits(R"({"done":0,"total":0})")), u"items must be a list"_s);
    EXPECT_EQ(
        fault(readHabits(R"({"done":0,"total":0,"items":[3]})")), u"items[0] must be an object"_s);
    EXPECT_EQ(
        fault(readChores(R"({"count":1,"top":[{"id":"a","name":"A","room":null}]})")),
        u"top[0].room must be a text"_s);
    EXPECT_EQ(
        fault(
            readChores(R"({"count":1,"top":[{"id":"a","name":"A","room":"","daysOverdue":1.5}]})")),
        u"top[0].daysOverdue must be a whole number"_s);
    EXPECT_EQ(fault(readChores(R"({"count":1e16,"top":[]})")), u"count must be a whole number"_s);
    EXPECT_EQ(
        fault(readFocus(R"({"productiveShare":"0.4"})")), u"productiveShare must be a number"_s);
    EXPECT_EQ(
        fault(readSpending(R"({"mtd":1,"sameDayLastMonth":1,"top":[],"asOf":"","generatedAt":1,
                               "stale":0})")),
        u"stale must be true or false"_s);
}

TEST(PartsJson, HoldWholeTextsOnly) {
    const QString broken = u"a"_s + QChar(0xd83d) + u'b';
    const auto again = readChores(textOf(ChoresPart{1, {{u"a"_s, broken, {}, 0}}}));
    ASSERT_TRUE(again) << qPrintable(again.error());
    EXPECT_EQ(again->top.front().name, wholeText(broken));
    EXPECT_EQ(wholeText(u"Ä🛒"_s), u"Ä🛒"_s);
}
