#include "app/LumobarApp.h"

#include "app/LumobarAppFixture.h"
#include "support/Patience.h"

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class LumobarAppTest : public LumobarAppFixture {};

} // namespace

TEST_F(LumobarAppTest, ShowsTheItemBeforeAnyRequest) {
    program->start();
    QCoreApplication::processEvents();
    EXPECT_EQ(item->contents.size(), 1U);
    EXPECT_TRUE(transport->requests().empty());
}

TEST_F(LumobarAppTest, SaysAfterAWhileThatNoBarShowsIt) {
    item->reason = u"No status area"_s;
    program->start();
    clock->advance(1s);
    QCoreApplication::processEvents();
    clock->advance(29s);
    QCoreApplication::processEvents();
    EXPECT_FALSE(notifications->calls.contains(u"add no-status-area"_s));
    clock->advance(1s);
    QCoreApplication::processEvents();
    EXPECT_TRUE(notifications->calls.contains(u"add no-status-area"_s));
}

TEST_F(LumobarAppTest, BeginsOnceAStatusAreaShowsTheItem) {
    begin();
    EXPECT_EQ(transport->requests().size(), 1U);
    EXPECT_EQ(notifications->calls, QStringList{u"authorize"_s});
    Q_EMIT item->shown();
    clock->advance(1s);
    QCoreApplication::processEvents();
    EXPECT_EQ(transport->requests().size(), 1U);
    EXPECT_EQ(notifications->calls, QStringList{u"authorize"_s});
}

TEST_F(LumobarAppTest, BeginsWithoutAStatusAreaAfterAMoment) {
    program->start();
    clock->advance(299ms);
    QCoreApplication::processEvents();
    EXPECT_TRUE(transport->requests().empty());
    clock->advance(1ms);
    QCoreApplication::processEvents();
    EXPECT_EQ(transport->requests().size(), 1U);
}

TEST_F(LumobarAppTest, StepsBackWhereAnotherProcessRuns) {
    ASSERT_TRUE(client.registerService(commandService));
    const QSignalSpy superseded(program.get(), &LumobarApp::superseded);
    begin();
    EXPECT_EQ(superseded.count(), 1);
    EXPECT_TRUE(transport->requests().empty());
    EXPECT_TRUE(client.unregisterService(commandService));
}

TEST_F(LumobarAppTest, TheMenuRefreshes) {
    begin();
    Q_EMIT item->commandChosen(MenuCommand::Refresh, {});
    EXPECT_EQ(transport->requests().size(), 2U);
}

TEST_F(LumobarAppTest, AsksForNoPermissionWhereTheUserWantsNoReminders) {
    preferences->set(u"notifyBeforeMeetings"_s, u"false"_s);
    begin();
    EXPECT_EQ(notifications->calls, QStringList());
}

TEST_F(LumobarAppTest, AReactionToAReminderOpensItsMeeting) {
    begin();
    Q_EMIT notifications->responded({{u"meetingUrl"_s, u"https://meet.example/a"_s}}, "token");
    EXPECT_EQ(urls->opened, QList{QUrl(u"https://meet.example/a"_s)});
    EXPECT_EQ(urls->tokens, QList<QByteArray>{"token"});
}

TEST_F(LumobarAppTest, TheMenuJoinsByTheLinksThatTheUserAllows) {
    begin();
    QByteArray body = briefingBody(1);
    body.replace(
        R"("eventsToday":[])", R"("eventsToday":[{"title":"Standup","allDay":false,)"
                               R"("start":"2025-03-04T09:10:00Z","meetingUrl":"slack://open"}])");
    transport->complete(0, FakeHttpTransport::answer(200, body));
    Q_EMIT item->commandChosen(MenuCommand::Join, {});
    EXPECT_TRUE(urls->opened.isEmpty());
    EXPECT_TRUE(preferences->setValue(u"linkSchemes"_s, u"slack"_s));
    Q_EMIT item->commandChosen(MenuCommand::Join, "token");
    EXPECT_EQ(urls->opened, QList{QUrl(u"slack://open"_s)});
    EXPECT_EQ(urls->tokens, QList<QByteArray>{"token"});
}

TEST_F(LumobarAppTest, RemindersComeAndAreAnsweredWhileThePanelIsOpen) {
    begin();
    Q_EMIT item->commandChosen(MenuCommand::Open, {});
    ASSERT_TRUE(isPanelOpen());
    QByteArray body = briefingBody(1);
    body.replace(
        R"("eventsToday":[])",
        R"("eventsToday":[{"title":"Standup","allDay":false,"start":"2025-03-04T09:10:00Z"}])");
    transport->complete(0, FakeHttpTransport::answer(200, body));
    ASSERT_EQ(notifications->pending.size(), 1U);
    EXPECT_EQ(notifications->pending[0].title, u"Standup"_s);
    clock->advance(5min);
    Q_EMIT notifications->responded({{u"meetingUrl"_s, u"https://meet.example/a"_s}}, "token");
    EXPECT_EQ(urls->opened.size(), 1);
    EXPECT_TRUE(isPanelOpen());
    EXPECT_EQ(notifications->calls.filter(u"remove"_s), QStringList());
}

TEST_F(LumobarAppTest, FetchesAgainOnceRemindersAreAllowed) {
    begin();
    Q_EMIT notifications->authorizable();
    QCoreApplication::processEvents();
    EXPECT_EQ(transport->requests().size(), 2U);
}

TEST_F(LumobarAppTest, ANetworkThatComesUpEndsAFailure) {
    begin();
    Q_EMIT network->cameUp();
    QCoreApplication::processEvents();
    EXPECT_EQ(transport->requests().size(), 1U);

    transport->complete(0, FakeHttpTransport::answer(401));
    Q_EMIT network->cameUp();
    QCoreApplication::processEvents();
    EXPECT_EQ(transport->requests().size(), 2U);
}

TEST_F(LumobarAppTest, TheMenuOpensTheOneSettingsWindow) {
    const auto openSettingsWindows = [] {
        int count = 0;
        for (const QWidget* widget : QApplication::topLevelWidgets())
            count += widget->isVisible() && widget->windowTitle() == u"Settings"_s;
        return count;
    };
    begin();
    for (int i = 0; i < 2; ++i) {
        Q_EMIT item->commandChosen(MenuCommand::Settings, {});
        EXPECT_EQ(openSettingsWindows(), 1);
    }
    program.reset();
    EXPECT_EQ(openSettingsWindows(), 0);
}

TEST_F(LumobarAppTest, OneFollowsTheDesktopForAllWindows) {
    begin();
    Q_EMIT item->commandChosen(MenuCommand::Open, {});
    Q_EMIT item->commandChosen(MenuCommand::Settings, {});
    EXPECT_EQ(appearance->followers(), 1);
}

TEST_F(LumobarAppTest, AFailureWithoutAMessageIsOneAllTheSame) {
    begin();
    const auto refresh = command(u"Refresh"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return transport->requests().size() == 2; }, patience));
    transport->complete(1, FakeHttpTransport::answer(400, R"({"error": ""})"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return refresh.isFinished(); }, patience));
    EXPECT_EQ(refresh.reply().arguments(), (QVariantList{false, QString()}));
}

TEST_F(LumobarAppTest, GivesMemoryBackOnceTheNewHasTakenThePlaceOfTheOld) {
    begin();
    transport->complete(0, FakeHttpTransport::answer(200, briefingBody(1)));
    StateHarness::settle();
    Q_EMIT item->commandChosen(MenuCommand::Refresh, {});
    transport->complete(1, FakeHttpTransport::answer(200, briefingBody(1)));
    StateHarness::settle();
    clock->advance(4s);
    EXPECT_EQ(memoryReturns, 0);
    clock->advance(1s);
    EXPECT_EQ(memoryReturns, 1);
    clock->advance(60s);
    EXPECT_EQ(memoryReturns, 1);
    Q_EMIT item->commandChosen(MenuCommand::Refresh, {});
    transport->complete(2, FakeHttpTransport::answer(401));
    StateHarness::settle();
    clock->advance(60s);
    EXPECT_EQ(memoryReturns, 2);
}

TEST_F(LumobarAppTest, APanelThatIsClosedLetsGoOfWhatItShowed) {
    const auto habit = [](const QByteArray& name) {
        return FakeHttpTransport::answer(
            200, briefingBody(1).replace(
                     R"("items":[])", R"("items":[{"id":"h1","name":")" + name +
                                          R"(","done":false,"count":0,"target":1,"streak":0}])"));
    };
    const auto holds = [](const QString& name) {
        return std::ranges::any_of(QApplication::allWidgets(), [&](const QWidget* widget) {
            return widget->accessibleName().contains(name);
        });
    };
    begin();
    transport->complete(0, habit("xxx"));
    StateHarness::settle();
    Q_EMIT item->commandChosen(MenuCommand::Open, {});
    ASSERT_TRUE(holds(u"xxx"_s));
    clock->advance(1min);
    Q_EMIT item->activated({}, {});
    ASSERT_FALSE(isPanelOpen());
    Q_EMIT item->commandChosen(MenuCommand::Refresh, {});
    transport->complete(1, habit("Read"));
    StateHarness::settle();
    clock->advance(5s);
    EXPECT_FALSE(holds(u"xxx"_s));
    EXPECT_TRUE(holds(u"Read"_s));
}
