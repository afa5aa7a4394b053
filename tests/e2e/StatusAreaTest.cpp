#include "e2e/ConfiguredProgram.h"
#include "support/FakeWatcher.h"
#include "support/Fixtures.h"
#include "support/Patience.h"
#include "support/ScriptedServer.h"

#include <QDBusMessage>
#include <QTest>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString logind = u"org.freedesktop.login1"_s;

/// A user whose desktop keeps status items and whose service the test plays itself.
class StatusArea : public testing::Test {
protected:
    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, "a token"));
        lumora.writePreferences({{u"endpointURL"_s, server.url(u"/api/briefing"_s).toString()}});
    }

    std::unique_ptr<FakeWatcher> makeWatcher() {
        return std::make_unique<FakeWatcher>(lumora.sessionBus().connect());
    }

    bool registers() {
        return QTest::qWaitFor([this] { return !watcher->registered().isEmpty(); }, patience);
    }

    static void announceSleep(QDBusConnection manager, bool goingToSleep) {
        auto signal = QDBusMessage::createSignal(
            u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s,
            u"PrepareForSleep"_s);
        signal.setArguments({goingToSleep});
        ASSERT_TRUE(manager.send(signal));
    }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    std::unique_ptr<FakeWatcher> watcher = makeWatcher();
    QByteArray body = fixture(u"briefing-minimal.json"_s);
    bool wasRegisteredFirst = false;
    ScriptedServer server{[this](QTcpSocket& connection, const QByteArray&) {
        if (server.requests().size() == 1)
            wasRegisteredFirst = watcher && !watcher->registered().isEmpty();
        connection.write(ScriptedServer::answer("200 OK", body));
        connection.disconnectFromHost();
    }};
};

} // namespace

TEST_F(StatusArea, TakesItsPlaceBeforeTheFirstRequest) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    EXPECT_TRUE(wasRegisteredFirst);
    EXPECT_EQ(watcher->registered(), QStringList(lumora.uniqueName()));
    EXPECT_EQ(lumora.itemProperty(u"Id"_s), u"lumora"_s);
    EXPECT_EQ(lumora.itemProperty(u"ItemIsMenu"_s), false);
    EXPECT_EQ(lumora.itemProperty(u"Title"_s), u"Lumora"_s);
    EXPECT_FALSE(lumora.itemProperty(u"XAyatanaLabel"_s).isValid());
}

TEST_F(StatusArea, FollowsTheBriefing) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    BusProbe host(lumora.sessionBus().connect(), u"com.lumora.app"_s);
    host.listen(u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s);
    body.replace(R"("done": 0, "total": 0)", R"("done": 3, "total": 4)");
    ASSERT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    EXPECT_EQ(lumora.itemProperty(u"XAyatanaLabel"_s), u"3/4"_s);
    EXPECT_EQ(lumora.itemProperty(u"Title"_s), u"Lumora: 3/4"_s);
    EXPECT_EQ(host.signalsNamed(u"XAyatanaNewLabel"_s).size(), 1);

    host.forget();
    ASSERT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    QStringList told = host.signalNames();
    told.removeAll(u"NewIcon"_s); // said again for some seconds to hosts that may still be starting
    EXPECT_EQ(told, QStringList());
}

TEST_F(StatusArea, RegistersAgainWithAWatcherThatComesBack) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    EXPECT_EQ(watcher->registered(), QStringList(lumora.uniqueName()));
    watcher.reset();
    watcher = makeWatcher();
    ASSERT_TRUE(registers());
    EXPECT_EQ(watcher->registered(), QStringList(lumora.uniqueName()));
}

TEST_F(StatusArea, RunsWithoutAPlaceAndTakesOneLater) {
    watcher.reset();
    lumora.start();
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    watcher = makeWatcher();
    ASSERT_TRUE(registers());
    EXPECT_EQ(watcher->registered(), QStringList(lumora.uniqueName()));
}

TEST_F(StatusArea, FetchesOnceWhenTheMachineWakes) {
    QDBusConnection manager = lumora.systemBus().connect();
    ASSERT_TRUE(manager.registerService(logind));
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    ASSERT_EQ(server.requests().size(), 1);

    announceSleep(manager, true);
    announceSleep(manager, false);
    ASSERT_TRUE(QTest::qWaitFor([this] { return server.requests().size() > 1; }, patience));
    // Whatever else the waking might have asked for goes out before this one.
    ASSERT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    EXPECT_EQ(server.requests().size(), 3);
}
