#include "briefing/LoadState.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

Briefing briefing(double generatedAt, const QString& date) {
    Briefing result;
    result.generatedAt = generatedAt;
    result.date = date;
    return result;
}

} // namespace

TEST(LoadState, StartsIdle) {
    EXPECT_TRUE(LoadState().isIdle());
    EXPECT_EQ(LoadState().name(), u"idle"_s);
}

TEST(LoadState, NamesEachCase) {
    EXPECT_EQ(LoadState::loading().name(), u"loading"_s);
    EXPECT_EQ(LoadState::loaded({}).name(), u"loaded"_s);
    EXPECT_EQ(LoadState::failed(u"M"_s).name(), u"failed"_s);
}

TEST(LoadState, OnlyAFailureHasAMessage) {
    EXPECT_EQ(LoadState::failed(u"M"_s).failureMessage(), u"M"_s);
    EXPECT_EQ(LoadState::failed({}).failureMessage(), u""_s);
    for (const LoadState& state : {LoadState(), LoadState::loading(), LoadState::loaded({})})
        EXPECT_FALSE(state.failureMessage());
}

TEST(LoadState, LoadedStatesAreEqualByGenerationTimeAlone) {
    EXPECT_EQ(LoadState::loaded(briefing(1, u"a"_s)), LoadState::loaded(briefing(1, u"b"_s)));
    EXPECT_NE(LoadState::loaded(briefing(1, u"a"_s)), LoadState::loaded(briefing(2, u"a"_s)));
}

TEST(LoadState, FailuresAreEqualByMessage) {
    EXPECT_EQ(LoadState::failed(u"M"_s), LoadState::failed(u"M"_s));
    EXPECT_NE(LoadState::failed(u"M"_s), LoadState::failed(u"N"_s));
}

TEST(LoadState, DifferentCasesDiffer) {
    EXPECT_EQ(LoadState(), LoadState());
    EXPECT_EQ(LoadState::loading(), LoadState::loading());
    EXPECT_NE(LoadState(), LoadState::loading());
    EXPECT_NE(LoadState::loading(), LoadState::failed({}));
}
