#include "service/LumoAction.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(LumoAction, SaysWhatItIsAndWhatItIsAbout) {
    using Body = LumoAction::Body;
    EXPECT_EQ(
        LumoAction::habitToggle(u"read"_s).body(),
        (Body{{u"type"_s, u"habit.toggle"_s}, {u"id"_s, u"read"_s}}));
    EXPECT_EQ(
        LumoAction::choreDone(u"plants"_s).body(),
        (Body{{u"type"_s, u"chore.done"_s}, {u"id"_s, u"plants"_s}}));
    EXPECT_EQ(
        LumoAction::capture(u"milk"_s).body(),
        (Body{{u"type"_s, u"capture"_s}, {u"text"_s, u"milk"_s}}));
    EXPECT_EQ(LumoAction::spendingRefresh().body(), (Body{{u"type"_s, u"spending.refresh"_s}}));
}

TEST(LumoAction, KeepsWhatItWasGiven) {
    EXPECT_EQ(LumoAction::capture(u" two  spaces\n"_s).body()[u"text"_s], u" two  spaces\n"_s);
    EXPECT_EQ(LumoAction::habitToggle(QString()).body().size(), 2);
    EXPECT_EQ(LumoAction::choreDone(u""_s).body()[u"id"_s], u""_s);
}

TEST(LumoAction, IsEqualWhenItAsksForTheSame) {
    EXPECT_EQ(LumoAction::habitToggle(u"a"_s), LumoAction::habitToggle(u"a"_s));
    EXPECT_NE(LumoAction::habitToggle(u"a"_s), LumoAction::habitToggle(u"b"_s));
    EXPECT_NE(LumoAction::habitToggle(u"a"_s), LumoAction::choreDone(u"a"_s));
}
