#include "texts/ActionTargets.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

Briefing namedItems() {
    Briefing briefing;
    briefing.habits.items = {
        {.id = u"1"_s, .name = u"Read"_s},   {.id = u"2"_s, .name = u" 1 "_s},
        {.id = u"3"_s, .name = u"Walk"_s},   {.id = u"4"_s, .name = u"walk"_s},
        {.id = u"Walk"_s, .name = u"Sit"_s}, {.id = u"5"_s, .name = u"\u00c4ndern"_s},
        {.id = u"6"_s, .name = u"Run"_s},    {.id = u"7"_s, .name = u"run"_s}};
    briefing.chores.top = {{u"c"_s, u"Water plants"_s, {}, {}}};
    return briefing;
}

} // namespace

TEST(ActionTargets, AnIdComesBeforeANameThatLooksLikeIt) {
    EXPECT_EQ(habitMeantBy(u"1"_s, namedItems()), u"1"_s);
    EXPECT_EQ(habitMeantBy(u"Walk"_s, namedItems()), u"Walk"_s);
}

TEST(ActionTargets, ANameInAnyCaseWillDoWhereThereIsOneOfIt) {
    EXPECT_EQ(habitMeantBy(u" read "_s, namedItems()), u"1"_s);
    EXPECT_EQ(habitMeantBy(u"\u00e4NDERN"_s, namedItems()), u"5"_s);
    EXPECT_EQ(choreMeantBy(u"WATER PLANTS"_s, namedItems()), u"c"_s);
}

TEST(ActionTargets, SeveralOfANameAreToldApartByTheirIds) {
    const auto run = habitMeantBy(u"Run"_s, namedItems());
    ASSERT_FALSE(run);
    EXPECT_EQ(run.error(), u"There are 2 habits \"Run\"; say which by its id: 6, 7"_s);
}

TEST(ActionTargets, OfTheOtherKindOrPartlyNamedThereIsNone) {
    EXPECT_EQ(habitMeantBy(u"c"_s, namedItems()).error(), u"There is no habit \"c\""_s);
    EXPECT_EQ(choreMeantBy(u"Read"_s, namedItems()).error(), u"There is no chore \"Read\""_s);
    EXPECT_EQ(choreMeantBy(u"Water"_s, namedItems()).error(), u"There is no chore \"Water\""_s);
    EXPECT_FALSE(habitMeantBy({}, namedItems()));
}
