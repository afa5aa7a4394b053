#include "texts/MenuBarAmbient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;

namespace {

std::vector<QString> all(QString (*property)(MenuBarAmbient)) {
    std::vector<QString> result;
    for (const auto ambient : menuBarAmbientCases)
        result.push_back(property(ambient));
    return result;
}

} // namespace

TEST(MenuBarAmbient, CasesHaveRawValuesAndTitlesInOrder) {
    EXPECT_THAT(all(rawValue), ElementsAre(u"habits"_s, u"focus"_s, u"chores"_s, u"none"_s));
    EXPECT_THAT(
        all(title), ElementsAre(u"Habit progress"_s, u"Focus %"_s, u"Chores due"_s, u"Nothing"_s));
}

TEST(MenuBarAmbient, RawValuesReadBack) {
    for (const auto ambient : menuBarAmbientCases)
        EXPECT_EQ(menuBarAmbientFromRaw(rawValue(ambient)), ambient);
}

TEST(MenuBarAmbient, AnyOtherTextIsHabits) {
    for (const auto& raw : {u"weather"_s, u""_s, u"Focus"_s, u" focus"_s, u"chores "_s, QString()})
        EXPECT_EQ(menuBarAmbientFromRaw(raw), MenuBarAmbient::Habits);
}
