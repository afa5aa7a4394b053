#include "e2e/ConfiguredProgram.h"
#include "support/FakeWatcher.h"
#include "support/Patience.h"
#include "support/ScriptedServer.h"

#include <QDBusPendingCall>
#include <QTest>

#include <csignal>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A user whose service does what the test says, and whose desktop takes the item at once.
class Ending : public testing::Test {
protected:
    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, "a token"));
        lumora.writePreferences({{u"endpointURL"_s, server.url(u"/api/briefing"_s).toString()}});
    }

    bool getsRequests(int count) {
        return QTest::qWaitFor([&] { return server.requests().size() >= count; }, patience);
    }

    void expectCleanEnd() {
        const auto ended = lumora.waitForEnd();
        EXPECT_EQ(ended.exitCode, 0);
        EXPECT_EQ(ended.out, "");
        EXPECT_EQ(ended.err, "");
        EXPECT_EQ(lumora.uniqueName(), QString());
    }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    FakeWatcher watcher{lumora.sessionBus().connect()};
    QByteArray answer; ///< empty: none
    ScriptedServer server{[this](QTcpSocket& connection, const QByteArray&) {
        if (answer.isEmpty())
            return;
        connection.write(answer);
        connection.disconnectFromHost();
    }};
};

} // namespace

TEST_F(Ending, QuitsRightAfterItsStart) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loading"_s}}));
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    expectCleanEnd();
}

TEST_F(Ending, EndsAtOnceWhenTheSessionEndsIt) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(number);
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loading"_s}}));
        ASSERT_EQ(::kill(pid_t(lumora.program().processId()), number), 0);
        expectCleanEnd();
    }
}

TEST_F(Ending, DoesNotWaitForARefresh) {
    lumora.start();
    ASSERT_TRUE(getsRequests(1));
    const auto refresh = lumora.makeProcess();
    refresh->setArguments({u"refresh"_s});
    refresh->start();
    ASSERT_TRUE(getsRequests(2));

    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    expectCleanEnd();
    const auto refreshed = ProgramHarness::finish(*refresh);
    EXPECT_EQ(refreshed.exitCode, 1);
    EXPECT_EQ(refreshed.err, "lumora: Lumora does not answer\n");
}

TEST_F(Ending, HasPrintedNothingAfterManyActivations) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loading"_s}}));
    const QDBusConnection bus = lumora.sessionBus().connect();
    // The bus lets a client wait for 128 replies at once.
    constexpr int rounds = 10;
    constexpr int atOnce = 100;
    for (int round = 0; round < rounds; ++round) {
        QList<QDBusPendingCall> calls;
        for (int i = 0; i < atOnce; ++i) {
            auto activate = QDBusMessage::createMethodCall(
                lumora.uniqueName(), u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s,
                u"Activate"_s);
            activate.setArguments({10, 10});
            calls += bus.asyncCall(activate);
        }
        ASSERT_TRUE(QTest::qWaitFor([&] { return calls.last().isFinished(); }, patience));
        EXPECT_EQ(calls.last().reply().type(), QDBusMessage::ReplyMessage);
    }
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    expectCleanEnd();
}

TEST_F(Ending, DoesNotWaitForTheNextTry) {
    answer = ScriptedServer::answer("503 Busy", {});
    lumora.start();
    ASSERT_TRUE(getsRequests(2));
    // The third try is a second away.
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    expectCleanEnd();
    EXPECT_EQ(server.requests().size(), 2);
}
