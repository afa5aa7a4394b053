#include "state/AppStateActionsFixture.h"

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;

TEST_F(AppStateActionsTest, MayEndWhileAnActionIsPosted) {
    auto taken = toggle(u"a"_s);
    auto refused = toggle(u"b"_s);
    auto captured = state->capture(u"milk"_s);
    state.reset();
    reply(1, 200);
    reply(2, 404);
    reply(3, 200);
    EXPECT_TRUE(awaitValue(std::move(taken)));
    EXPECT_FALSE(awaitValue(std::move(refused)));
    EXPECT_TRUE(awaitValue(std::move(captured)));
    EXPECT_EQ(requestCount(), 4U);
}

TEST_F(AppStateActionsTest, MayEndBetweenTheTriesOfAnAction) {
    transport.prepare(FakeHttpTransport::answer(503));
    transport.prepare(FakeHttpTransport::answer(200));
    auto task = toggle(u"a"_s);
    state.reset();
    clock.advance(1s);
    EXPECT_TRUE(awaitValue(std::move(task))); // what was asked for is still delivered
    EXPECT_EQ(requestCount(), 3U);
}

TEST_F(AppStateActionsTest, MayEndDuringTheRefreshAfterAnAction) {
    auto task = toggle(u"a"_s);
    auto captured = state->capture(u"milk"_s);
    reply(1, 200);
    reply(2, 200);
    state.reset();
    answer(3, 2);
    answer(4, 2);
    EXPECT_TRUE(awaitValue(std::move(task)));
    EXPECT_TRUE(awaitValue(std::move(captured)));
    EXPECT_EQ(reminders.scheduled.size(), 1U);
}

TEST_F(AppStateActionsTest, ActionsMayOutliveWhoeverAskedForThem) {
    {
        const auto dropped = toggle(u"read"_s);
    }
    reply(1, 200);
    answer(2, 2);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_EQ(state->lastGood()->generatedAt, 2);
}
