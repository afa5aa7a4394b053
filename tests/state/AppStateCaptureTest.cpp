#include "state/AppStateActionsFixture.h"

#include <QSignalSpy>

using namespace lumora;
using namespace lumora::tests;

TEST_F(AppStateActionsTest, CapturesTheTextWithoutItsSurroundings) {
    auto task = state->capture(u" \t\nhello  there\n "_s);
    EXPECT_EQ(state->pending(), Keys{u"capture"_s});
    ASSERT_EQ(requestCount(), 2U);
    EXPECT_EQ(transport.requests()[1].body, R"({"text":"hello  there","type":"capture"})");
    EXPECT_FALSE(awaitValue(state->capture(u"another"_s)));
    reply(1, 200);
    answer(2, 2);
    EXPECT_TRUE(awaitValue(std::move(task)));
    EXPECT_TRUE(state->pending().empty());
    EXPECT_EQ(requestCount(), 3U);
}

TEST_F(AppStateActionsTest, ABlankCaptureTouchesNothing) {
    failAnAction();
    const std::size_t requests = requestCount();
    const QSignalSpy changed(&*state, &AppState::changed);
    for (const QString& text : {u""_s, u"  \n"_s, u"\t\u2003\u00a0"_s})
        EXPECT_FALSE(awaitValue(state->capture(text)));
    EXPECT_EQ(requestCount(), requests);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(state->actionError(), u"E"_s);
}

TEST_F(AppStateActionsTest, AFailedCaptureSaysSo) {
    auto task = state->capture(u"milk"_s);
    reply(1, 400, R"({"error": "The inbox is full"})");
    EXPECT_FALSE(awaitValue(std::move(task)));
    EXPECT_EQ(state->actionError(), u"The inbox is full"_s);
    EXPECT_TRUE(state->pending().empty());
}
