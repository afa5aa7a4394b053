#include "support/Fixtures.h"
#include "support/Patience.h"
#include "support/ProgramHarness.h"
#include "support/RealKeyring.h"
#include "support/ScriptedServer.h"

#include <QFile>
#include <QTest>

#include <cstring>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray usersToken = "tell-this-to-nobody";
const QByteArray usersSpending = "73519.42";

/// How the spending would be written, or sent.
QByteArrayList tracesOfSpending() {
    const double number = usersSpending.toDouble();
    QByteArray bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return {"73519", "73,519", "73.519", "73 519", "73\u202f519", "73\u00a0519", bytes};
}

/// Hears every message on a bus, as a monitor does.
class BusMonitor {
public:
    explicit BusMonitor(PrivateBus& bus)
        : m_sender(bus.connect()) {
        m_process.start(u"dbus-monitor"_s, {u"--address"_s, bus.address(), u"--binary"_s});
        EXPECT_TRUE(m_process.waitForStarted(patience));
        EXPECT_TRUE(hears("the beginning"));
    }

    ~BusMonitor() {
        m_process.kill();
        m_process.waitForFinished(patience);
    }

    BusMonitor(const BusMonitor&) = delete;
    BusMonitor& operator=(const BusMonitor&) = delete;

    /// All messages up to now, as they went over the bus.
    QByteArray everything() {
        EXPECT_TRUE(hears("the end"));
        return m_heard;
    }

private:
    /// Has the words sent until the monitor hears them.
    bool hears(const QByteArray& words) {
        return QTest::qWaitFor(
            [&] {
                auto signal = QDBusMessage::createSignal(u"/"_s, u"com.example.test"_s, u"Said"_s);
                signal << words;
                m_sender.send(signal);
                m_heard += m_process.readAllStandardOutput();
                return m_heard.contains(words);
            },
            patience);
    }

    QDBusConnection m_sender;
    QProcess m_process;
    QByteArray m_heard;
};

/// A user with a token in the keyring and spending in the briefing, who is overheard.
class Eavesdropper : public testing::Test {
protected:
    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, usersToken));
        lumora.writePreferences({{u"endpointURL"_s, server.url(u"/api/briefing"_s).toString()}});
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}, {u"text"_s, u"1/3"_s}}));
        ASSERT_EQ(header(server.requests().first(), "X-Api-Key"), usersToken);
    }

    /// What any process of the same user may read of the program.
    QByteArray processFiles() {
        QByteArray text;
        for (const auto& name : {u"cmdline"_s, u"environ"_s}) {
            QFile file(u"/proc/%1/%2"_s.arg(lumora.program().processId()).arg(name));
            EXPECT_TRUE(file.open(QFile::ReadOnly));
            text += file.readAll();
        }
        EXPECT_TRUE(text.contains("XDG_CONFIG_HOME"));
        return text;
    }

    ScriptedServer server{ScriptedServer::always(ScriptedServer::answer(
        "200 OK", fixture(u"briefing-full.json"_s).replace("1234.56", usersSpending)))};
    ProgramHarness lumora;
    BusMonitor monitor{lumora.sessionBus()};
    RealKeyring keyring{lumora.sessionBus()};
};

} // namespace

TEST_F(Eavesdropper, HearsNoTokenAndNoAmounts) {
    // While the panel has the spending, and the settings have the token in their field.
    EXPECT_EQ(lumora.run({u"show"_s}).exitCode, 0);
    EXPECT_EQ(lumora.run({u"settings"_s}).exitCode, 0);
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    EXPECT_EQ(lumora.run({u"status"_s, u"--format"_s, u"json"_s}).exitCode, 0);
    EXPECT_EQ(lumora.run({u"agenda"_s}).exitCode, 0);
    const QByteArray read = processFiles();
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);

    const QByteArray heard = monitor.everything();
    EXPECT_TRUE(heard.contains("1/3")); // it listens in the right place
    EXPECT_TRUE(heard.contains("briefingToken"));
    EXPECT_FALSE(heard.contains(usersToken));
    EXPECT_FALSE(read.contains(usersToken));
    for (const QByteArray& trace : tracesOfSpending())
        EXPECT_FALSE(heard.contains(trace)) << trace.constData();
}
