#include "state/AppStateActionsFixture.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;

TEST_F(AppStateActionsTest, AnActionIsPostedAndItsKeyIsPending) {
    const QSignalSpy changed(&*state, &AppState::changed);
    const auto task = toggle(u"read"_s);
    EXPECT_EQ(state->pending(), Keys{habitKey});
    EXPECT_EQ(changed.count(), 1);
    ASSERT_EQ(requestCount(), 2U);
    const HttpRequest& request = transport.requests()[1];
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, QUrl(u"https://day.example/api/briefing/action"_s));
    EXPECT_EQ(request.body, R"({"id":"read","type":"habit.toggle"})");
    EXPECT_FALSE(task.isReady());
}

TEST_F(AppStateActionsTest, TheKeyStaysPendingUntilTheNextBriefingIsInPlace) {
    auto task = toggle(u"read"_s);
    std::vector<std::pair<double, Keys>> seen;
    QObject::connect(&*state, &AppState::changed, &*state, [&] {
        seen.emplace_back(state->lastGood()->generatedAt, state->pending());
    });
    reply(1, 200, R"({"ok": true})");
    ASSERT_EQ(requestCount(), 3U);
    EXPECT_EQ(method(2), "GET");
    EXPECT_EQ(state->pending(), Keys{habitKey});
    EXPECT_FALSE(task.isReady());
    answer(2, 2);
    EXPECT_EQ(seen, (std::vector<std::pair<double, Keys>>{{2.0, Keys{habitKey}}, {2.0, Keys{}}}));
    EXPECT_TRUE(awaitValue(std::move(task)));
    EXPECT_FALSE(state->actionError());
}

TEST_F(AppStateActionsTest, OfTwoQuickTogglesOfAHabitOneIsSent) {
    auto first = toggle(u"read"_s);
    const QSignalSpy changed(&*state, &AppState::changed);
    auto second = toggle(u"read"_s);
    ASSERT_TRUE(second.isReady());
    EXPECT_FALSE(awaitValue(std::move(second)));
    EXPECT_EQ(requestCount(), 2U);
    EXPECT_EQ(changed.count(), 0);
    reply(1, 200);
    EXPECT_FALSE(awaitValue(toggle(u"read"_s))); // still pending during the refresh
    answer(2, 2);
    EXPECT_TRUE(awaitValue(std::move(first)));
    EXPECT_EQ(requestCount(), 3U);
    toggle(u"read"_s);
    EXPECT_EQ(requestCount(), 4U);
}

TEST_F(AppStateActionsTest, ARefusedSecondActionLeavesTheErrorAlone) {
    toggle(u"read"_s);
    failAnAction();
    EXPECT_FALSE(awaitValue(toggle(u"read"_s)));
    EXPECT_EQ(state->actionError(), u"E"_s);
    EXPECT_EQ(state->pending(), Keys{habitKey});
}

TEST_F(AppStateActionsTest, DifferentHabitsProceedTogetherAndEndOnTheirOwn) {
    auto first = toggle(u"a"_s);
    auto second = toggle(u"b"_s);
    ASSERT_EQ(requestCount(), 3U);
    EXPECT_EQ(state->pending(), (Keys{u"habit:a"_s, u"habit:b"_s}));
    reply(2, 200);
    answer(3, 2);
    EXPECT_TRUE(awaitValue(std::move(second)));
    EXPECT_EQ(state->pending(), Keys{u"habit:a"_s});
    reply(1, 200);
    answer(4, 3);
    EXPECT_TRUE(awaitValue(std::move(first)));
    EXPECT_TRUE(state->pending().empty());
}

TEST_F(AppStateActionsTest, ASuccessDoesNotHideWhatFailedMeanwhile) {
    const auto slow = toggle(u"slow"_s);
    failAnAction();
    reply(1, 200);
    answer(3, 2);
    EXPECT_TRUE(slow.isReady());
    EXPECT_EQ(state->actionError(), u"E"_s);
}

TEST_F(AppStateActionsTest, TheNextActionOfAnyKindClearsTheError) {
    failAnAction();
    toggle(u"a"_s);
    EXPECT_FALSE(state->actionError());
    failAnAction();
    spawn(state->capture(u"milk"_s));
    EXPECT_FALSE(state->actionError());
    failAnAction();
    spawn(state->refreshSpending());
    EXPECT_FALSE(state->actionError());
}

TEST_F(AppStateActionsTest, AnErrorComesAndGoesWithTheKeyOfItsAction) {
    failAnAction();
    using Seen = std::pair<std::optional<QString>, Keys>;
    const auto seen = watch([this] { return Seen(state->actionError(), state->pending()); });
    toggle(u"read"_s);
    reply(2, 409, R"({"error": "F"})");
    EXPECT_EQ(*seen, (std::vector<Seen>{{std::nullopt, Keys{habitKey}}, {u"F"_s, Keys{}}}));
}

TEST_F(AppStateActionsTest, RefreshesLeaveTheErrorAlone) {
    failAnAction();
    spawn(state->refresh());
    answer(requestCount() - 1, 2);
    EXPECT_EQ(state->actionError(), u"E"_s);
}

TEST_F(AppStateActionsTest, AChoreThatFailsThreeTimesShowsWhyWithoutARefresh) {
    for (int i = 0; i < 3; ++i)
        transport.prepare(FakeHttpTransport::answer(500));
    auto task = state->perform(LumoAction::choreDone(u"plants"_s), u"chore:plants"_s);
    const QSignalSpy changed(&*state, &AppState::changed);
    clock.advance(1499ms);
    EXPECT_FALSE(state->actionError());
    EXPECT_EQ(state->pending(), Keys{u"chore:plants"_s});
    clock.advance(1ms);
    EXPECT_EQ(state->actionError(), u"Server error (500)"_s);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(awaitValue(std::move(task)));
    ASSERT_EQ(requestCount(), 4U);
    EXPECT_EQ(method(3), "POST");
}

TEST_F(AppStateActionsTest, ARefusalShowsTheServersWordsAtOnce) {
    auto task = toggle(u"read"_s);
    reply(1, 409, R"({"error": "Not today"})");
    EXPECT_FALSE(awaitValue(std::move(task)));
    EXPECT_EQ(state->actionError(), u"Not today"_s);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_EQ(requestCount(), 2U);
    EXPECT_TRUE(state->state().isLoaded());
}

TEST_F(AppStateActionsTest, WhatTheReplySaysDoesNotMatter) {
    for (const QByteArray body :
         {"", "<html></html>", R"({"ok": false, "queued": false, "reason": "R"})"}) {
        const std::size_t index = requestCount();
        auto task = toggle(u"read"_s);
        reply(index, 200, body);
        answer(index + 1, 2);
        EXPECT_TRUE(awaitValue(std::move(task))) << body.constData();
        EXPECT_FALSE(state->actionError()) << body.constData();
    }
}

TEST_F(AppStateActionsTest, AnActionSucceedsEvenWhenTheRefreshAfterItFails) {
    auto task = toggle(u"read"_s);
    reply(1, 200);
    reply(2, 401);
    EXPECT_TRUE(awaitValue(std::move(task)));
    EXPECT_TRUE(state->pending().empty());
    EXPECT_FALSE(state->actionError());
    EXPECT_EQ(state->state().failureMessage(), u"Token rejected (401)"_s);
}

TEST_F(AppStateActionsTest, WithoutATokenAnActionFailsWithoutARequest) {
    EXPECT_TRUE(keychain.deleteToken());
    EXPECT_FALSE(awaitValue(toggle(u"read"_s)));
    EXPECT_EQ(state->actionError(), u"Endpoint URL or token not set"_s);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_EQ(requestCount(), 1U);
}

TEST_F(AppStateActionsTest, TheEndpointIsReadAfreshForEveryAction) {
    preferences.set(u"endpointURL"_s, u" https://other.example/b/ "_s);
    toggle(u"read"_s);
    EXPECT_EQ(transport.requests()[1].url, QUrl(u"https://other.example/b/action"_s));
}

TEST_F(AppStateActionsTest, OtherRefreshesDoNotGiveAKeyFree) {
    const auto task = toggle(u"read"_s);
    clock.advance(10min);
    ASSERT_EQ(method(2), "GET");
    answer(2, 2);
    EXPECT_EQ(state->pending(), Keys{habitKey});
    reply(1, 200);
    spawn(state->refresh());
    answer(4, 4);
    EXPECT_EQ(state->pending(), Keys{habitKey});
    answer(3, 3);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_TRUE(task.isReady());
}

TEST_F(AppStateActionsTest, AnActionDoesNotWaitForARefreshThatWasUnderWay) {
    spawn(state->refresh());
    auto task = toggle(u"read"_s);
    reply(2, 200);
    answer(3, 3);
    EXPECT_TRUE(awaitValue(std::move(task)));
    EXPECT_TRUE(state->pending().empty());
    answer(1, 2);
    EXPECT_EQ(state->lastGood()->generatedAt, 2);
}

TEST_F(AppStateActionsTest, AnyIdIsAKeyOfItsOwn) {
    const QString ids[] = {
        u""_s,
        u" "_s,
        u"\"quoted\"\n"_s,
        u"👩🏽‍💻"_s,
        QString(QChar(0)),
        u"habit:"_s,
        QString(10'240, u'x')};
    Keys expected;
    for (const QString& id : ids) {
        toggle(id);
        expected.insert(u"habit:"_s + id);
        const auto sent = QJsonDocument::fromJson(*transport.requests().back().body).object();
        EXPECT_EQ(sent[u"id"_s].toString(), id);
        EXPECT_FALSE(awaitValue(toggle(id)));
    }
    EXPECT_EQ(state->pending(), expected);
    EXPECT_EQ(requestCount(), 1 + std::size(ids));
    for (std::size_t i = 0; i < std::size(ids); ++i)
        reply(i + 1, 404);
    EXPECT_TRUE(state->pending().empty());
}

TEST_F(AppStateActionsTest, AHabitAndAChoreOfTheSameIdDoNotMeet) {
    toggle(u"plants"_s);
    spawn(state->perform(LumoAction::choreDone(u"plants"_s), u"chore:plants"_s));
    EXPECT_EQ(requestCount(), 3U);
    EXPECT_EQ(state->pending(), (Keys{u"habit:plants"_s, u"chore:plants"_s}));
}
