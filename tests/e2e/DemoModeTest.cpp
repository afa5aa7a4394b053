#include "e2e/ConfiguredProgram.h"
#include "support/Patience.h"

#include <QTest>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QJsonObject loadedDemo{{u"mode"_s, u"countdown"_s}, {u"state"_s, u"loaded"_s}};

/// Hears every call to the keyring that any process on the bus makes.
class KeyringEavesdropper {
public:
    explicit KeyringEavesdropper(PrivateBus& bus) {
        m_monitor.start(
            u"dbus-monitor"_s, {u"--address"_s, bus.address(),
                                u"type='method_call',destination='org.freedesktop.secrets'"_s});
        // It loses its name at the moment from which on it hears everything.
        EXPECT_TRUE(hears("member=NameLost"));
    }

    ~KeyringEavesdropper() {
        m_monitor.kill();
        m_monitor.waitForFinished(patience);
    }

    KeyringEavesdropper(const KeyringEavesdropper&) = delete;
    KeyringEavesdropper& operator=(const KeyringEavesdropper&) = delete;

    /// Waits until it has heard this.
    bool hears(const QByteArray& words) {
        return QTest::qWaitFor(
            [&] {
                m_heard += m_monitor.readAllStandardOutput();
                return m_heard.contains(words);
            },
            patience);
    }

    /// How many calls there were so far.
    qsizetype calls() const { return m_heard.count("method call "); }

private:
    QProcess m_monitor;
    QByteArray m_heard;
};

class DemoMode : public testing::Test {
protected:
    /// Waits for the one service that the demo has started; 0 when there is none.
    qint64 demoService() {
        QList<qint64> children;
        (void)QTest::qWaitFor(
            [&] {
                children = childrenOf(lumora.program().processId());
                return children.size() == 1;
            },
            patience);
        return children.value(0);
    }

    static bool ends(qint64 process) {
        return QTest::qWaitFor([process] { return !isAlive(process); }, patience);
    }

    ProgramHarness lumora;
};

class DemoModeOfAConfiguredUser : public ConfiguredProgram {};

} // namespace

TEST_F(DemoMode, ShowsItsDayAndLeavesNothingBehind) {
    lumora.start({u"--demo"_s});
    ASSERT_TRUE(lumora.comesToShow(loadedDemo));
    const qint64 service = demoService();
    ASSERT_GT(service, 0);
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);

    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    const auto ended = lumora.waitForEnd();
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err, "");
    EXPECT_FALSE(isAlive(service));
    EXPECT_EQ(lumora.filesAtHome(), QStringList());
}

TEST_F(DemoMode, TakesItsServiceAlongHoweverItEnds) {
    lumora.start({u"--demo"_s});
    ASSERT_TRUE(lumora.comesToShow(loadedDemo));
    const qint64 killed = demoService();
    ASSERT_GT(killed, 0);
    lumora.program().kill();
    EXPECT_EQ(lumora.waitForEnd().exitCode, -1);
    EXPECT_TRUE(ends(killed));

    lumora.start({u"--demo"_s});
    ASSERT_TRUE(lumora.comesToShow(loadedDemo));
    const qint64 terminated = demoService();
    ASSERT_GT(terminated, 0);
    lumora.program().terminate();
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
    EXPECT_TRUE(ends(terminated));
}

TEST_F(DemoMode, ShowsTheScenarioItIsTold) {
    lumora.start({u"--demo"_s, u"--scenario"_s, u"quiet"_s});
    EXPECT_TRUE(lumora.comesToShow({{u"mode"_s, u"habits"_s}, {u"text"_s, u"5/5"_s}}));
}

TEST_F(DemoMode, SaysWhichScenariosThereAre) {
    const auto outcome = lumora.run({u"--demo"_s, u"--scenario"_s, u"sunny"_s});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.count('\n'), 1) << outcome.err.toStdString();
    for (const char* word : {"lumora: ", "sunny", "busy", "html"})
        EXPECT_TRUE(outcome.err.contains(word)) << outcome.err.toStdString();
}

TEST_F(DemoMode, DoesNotStartBesideARunningProgram) {
    lumora.start({u"--demo"_s});
    ASSERT_TRUE(lumora.comesToShow(loadedDemo));
    const auto second = lumora.run({u"--demo"_s});
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_EQ(second.out, "");
    EXPECT_EQ(second.err, "lumora: Lumora is already running; end it with \"lumora quit\" first\n");
    EXPECT_TRUE(lumora.comesToShow(loadedDemo));
}

TEST_F(DemoModeOfAConfiguredUser, TouchesNeitherSettingsNorKeyring) {
    const QByteArray preferences = lumora.preferencesFile();
    const QStringList files = lumora.filesAtHome();
    // The user's own service would say that something else is on.
    service.control({{u"scenario"_s, u"quiet"_s}});
    BusProbe marker(lumora.sessionBus().connect(), u"org.freedesktop.secrets"_s);
    KeyringEavesdropper eavesdropper(lumora.sessionBus());

    lumora.start({u"--demo"_s});
    ASSERT_TRUE(lumora.comesToShow(loadedDemo));
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
    marker.call(u"/"_s, u"com.lumora.test"_s, u"AfterTheDemo"_s);
    ASSERT_TRUE(eavesdropper.hears("member=AfterTheDemo"));
    EXPECT_EQ(eavesdropper.calls(), 1);

    // What it heard nothing of is there to be heard.
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"text"_s, u"5/5"_s}}));
    EXPECT_TRUE(eavesdropper.hears("member=SearchItems"));

    EXPECT_EQ(lumora.preferencesFile(), preferences);
    EXPECT_EQ(lumora.filesAtHome(), files);
}
