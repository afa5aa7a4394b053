#include "app/StatusItemController.h"

#include "fakes/FakeStatusItem.h"
#include "state/Ticker.h"
#include "support/StateHarness.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class StatusItemControllerTest : public testing::Test, protected StateHarness {
protected:
    void begin() {
        start();
        ticker.emplace(clock);
        controller.emplace(*state, *ticker, preferences, item);
    }

    const StatusItemContent& latest() const { return item.contents.back(); }

    FakeStatusItem item;
    std::optional<Ticker> ticker;
    std::optional<StatusItemController> controller;
};

} // namespace

TEST_F(StatusItemControllerTest, DrawsAtOnce) {
    begin();
    ASSERT_EQ(item.contents.size(), 1U);
    EXPECT_EQ(latest().symbol, u"calendar"_s);
    EXPECT_FALSE(latest().text);
}

TEST_F(StatusItemControllerTest, FollowsTheState) {
    begin();
    answer(0, 1);
    EXPECT_EQ(latest().text, u"1/2"_s);
}

TEST_F(StatusItemControllerTest, FollowsThePreference) {
    begin();
    answer(0, 1);
    preferences.set(u"menuBarAmbient"_s, u"none"_s);
    EXPECT_FALSE(latest().text);
    preferences.set(u"menuBarAmbient"_s, u"weather"_s);
    EXPECT_EQ(latest().text, u"1/2"_s);
}

TEST_F(StatusItemControllerTest, OffersToJoinByTheLinksThatTheUserAllows) {
    begin();
    QByteArray body = briefingBody(1);
    body.replace(
        R"("eventsToday":[])", R"("eventsToday":[{"title":"Standup","allDay":false,)"
                               R"("start":"2025-03-04T09:10:00Z","meetingUrl":"slack://open"}])");
    transport.complete(0, FakeHttpTransport::answer(200, body));
    settle();
    const auto canJoin = [this] {
        return std::ranges::any_of(latest().menu, [](const StatusMenuRow& row) {
            return row.command == MenuCommand::Join;
        });
    };
    EXPECT_FALSE(canJoin());
    EXPECT_TRUE(preferences.setValue(u"linkSchemes"_s, u"slack"_s));
    EXPECT_TRUE(canJoin());
}

TEST_F(StatusItemControllerTest, FollowsTheTicker) {
    begin();
    answer(0, 1);
    const auto before = item.contents.size();
    clock.advance(60s);
    EXPECT_EQ(item.contents.size(), before + 2);
    EXPECT_EQ(latest().toolTipBody, u"Updated 1m ago"_s);
}

TEST_F(StatusItemControllerTest, AFailureAfterASuccessLeavesTheLabelAlone) {
    begin();
    answer(0, 1);
    spawn(state->refresh());
    transport.complete(1, FakeHttpTransport::answer(401));
    EXPECT_EQ(latest().symbol, u"checkmark.circle"_s);
    EXPECT_EQ(latest().text, u"1/2"_s);
}

TEST_F(StatusItemControllerTest, TellsWhetherTheLabelOrOnlyTheRestHasChanged) {
    begin();
    const QSignalSpy labels(&*controller, &StatusItemController::labelChanged);
    const QSignalSpy details(&*controller, &StatusItemController::detailsChanged);
    answer(0, 1);
    EXPECT_EQ(labels.size(), 1);
    EXPECT_EQ(details.size(), 0);
    clock.advance(30s); // the tooltip says the same
    EXPECT_EQ(details.size(), 0);
    clock.advance(30s);
    EXPECT_EQ(labels.size(), 1);
    EXPECT_EQ(details.size(), 1);
    preferences.set(u"menuBarAmbient"_s, u"none"_s);
    EXPECT_EQ(labels.size(), 2);
    EXPECT_EQ(details.size(), 1);
    spawn(state->refresh());
    transport.complete(1, FakeHttpTransport::answer(401)); // a bar may draw that in red
    EXPECT_EQ(labels.size(), 3);
}

TEST_F(StatusItemControllerTest, ReportsAFailureWithNothingToSay) {
    begin();
    transport.complete(0, FakeHttpTransport::answer(400, R"({"error": ""})"));
    EXPECT_EQ(controller->report().state, u"failed"_s);
    EXPECT_EQ(controller->report().message, u""_s);
    EXPECT_EQ(latest().toolTipBody, u"The refresh failed, and no reason was given"_s);
    EXPECT_EQ(controller->report().mode, u"error"_s);
}

TEST_F(StatusItemControllerTest, ReportsWhatIsShownAndWhy) {
    begin();
    transport.complete(0, FakeHttpTransport::answer(401));
    const StatusReport failed = controller->report();
    EXPECT_EQ(failed.mode, u"error"_s);
    EXPECT_EQ(failed.symbol, u"calendar.badge.exclamationmark"_s);
    EXPECT_FALSE(failed.text);
    EXPECT_EQ(failed.state, u"failed"_s);
    EXPECT_EQ(failed.message, u"Token rejected (401)"_s);
    EXPECT_FALSE(failed.lastUpdated);

    spawn(state->refresh());
    answer(1, 1);
    const StatusReport loaded = controller->report();
    EXPECT_EQ(loaded.mode, u"habits"_s);
    EXPECT_EQ(loaded.text, u"1/2"_s);
    EXPECT_EQ(loaded.state, u"loaded"_s);
    EXPECT_FALSE(loaded.message);
    EXPECT_EQ(loaded.lastUpdated, FakeClock::defaultStart);
    EXPECT_EQ(loaded.tooltip, u"1 of 2 habits done\nUpdated just now"_s);
}
