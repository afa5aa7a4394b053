#include "app/LumobarApp.h"

#include "fakes/FakeAppearance.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeHttpTransport.h"
#include "fakes/FakeNotificationCenter.h"
#include "fakes/FakePreferences.h"
#include "fakes/FakeStatusItem.h"
#include "fakes/RecordingUrlOpener.h"
#include "linux/commands/CommandServer.h"
#include "platform/memory/MemoryLoginItems.h"
#include "platform/memory/MemorySecretStore.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"
#include "support/ScopedEnvironment.h"
#include "support/StateHarness.h"
#include "ui/window/PanelWindow.h"

#include <QApplication>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The program over fakes, on the session bus that this test program has to itself.
class LumobarAppTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        bus = std::make_unique<PrivateBus>();
        environment = std::make_unique<ScopedEnvironment>(
            "DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
    }

    static void TearDownTestSuite() {
        environment.reset();
        bus.reset();
    }

    void SetUp() override {
        PlatformFamily& family = platform.emplace();
        clock = keep(family.clock, std::make_unique<FakeClock>());
        transport = keep(family.transport, std::make_unique<FakeHttpTransport>());
        item = keep(family.statusItem, std::make_unique<FakeStatusItem>());
        urls = keep(family.urls, std::make_unique<RecordingUrlOpener>());
        notifications = keep(family.notifications, std::make_unique<FakeNotificationCenter>());
        preferences = keep(family.preferences, std::make_unique<FakePreferences>());
        preferences->set(u"endpointURL"_s, u"https://day.example/api/briefing"_s);
        family.secrets = std::make_unique<MemorySecretStore>();
        EXPECT_TRUE(KeychainService(*family.secrets).setToken(u"t0ken"_s));
        family.loginItems = std::make_unique<MemoryLoginItems>();
        family.wake = std::make_unique<WakeMonitor>();
        network = keep(family.network, std::make_unique<NetworkMonitor>());
        appearance = keep(family.appearance, std::make_unique<FakeAppearance>());
        family.compositing = std::make_unique<Compositing>(false);
        family.returnSpareMemory = [this] { ++memoryReturns; };
        program = std::make_unique<LumobarApp>(family);
    }

    template <typename Interface, typename Fake>
    static Fake* keep(std::unique_ptr<Interface>& place, std::unique_ptr<Fake> fake) {
        Fake* const kept = fake.get();
        place = std::move(fake);
        return kept;
    }

    /// Starts the program and lets a status area take the item.
    void begin() {
        program->start();
        Q_EMIT item->shown();
        QCoreApplication::processEvents();
    }

    static bool isPanelOpen() {
        return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
            return widget->isVisible() && qobject_cast<const PanelWindow*>(widget);
        });
    }

    /// Ends the program as its process does: the platform goes last, and completes what waits.
    void end() {
        program.reset();
        platform.reset();
    }

    QDBusPendingCall command(const QString& method) {
        return client.asyncCall(
            QDBusMessage::createMethodCall(commandService, commandPath, commandInterface, method));
    }

    static inline std::unique_ptr<PrivateBus> bus;
    static inline std::unique_ptr<ScopedEnvironment> environment;
    QDBusConnection client = bus->connect();
    FakeClock* clock = nullptr;
    FakeHttpTransport* transport = nullptr;
    FakeStatusItem* item = nullptr;
    FakePreferences* preferences = nullptr;
    RecordingUrlOpener* urls = nullptr;
    FakeNotificationCenter* notifications = nullptr;
    NetworkMonitor* network = nullptr;
    FakeAppearance* appearance = nullptr;
    int memoryReturns = 0;
    std::optional<PlatformFamily> platform;
    std::unique_ptr<LumobarApp> program;
};

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

// Ending completes whatever is under way, and none of it may find the program half gone.

TEST_F(LumobarAppTest, MayEndBeforeItBegan) {
    program->start();
    end();
}

TEST_F(LumobarAppTest, MayEndWhileItStillWaitsForAStatusArea) {
    begin();
    EXPECT_EQ(clock->pendingWaitCount(), 2U);
    end();
}

TEST_F(LumobarAppTest, MayEndWhileItAsksForPermission) {
    notifications->hold();
    begin();
    EXPECT_EQ(notifications->heldCount(), 1U);
    end();
}

TEST_F(LumobarAppTest, MayEndWhileSomebodyWaitsForARefresh) {
    begin();
    const auto refresh = command(u"Refresh"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return transport->requests().size() == 2; }, patience));
    end();
    EXPECT_FALSE(refresh.isFinished());
}
