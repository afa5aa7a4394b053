#include "e2e/Complaints.h"
#include "e2e/ConfiguredProgram.h"
#include "support/Patience.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusVirtualObject>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using Outcome = ProgramHarness::Outcome;

const QJsonObject answering{{u"state"_s, u"failed"_s}};

/// Has the place of the running program, and is gone at the first call.
class Vanishing : public QDBusVirtualObject {
public:
    explicit Vanishing(PrivateBus& bus) {
        QDBusConnection connection = bus.connect();
        m_name = connection.name();
        EXPECT_TRUE(connection.registerVirtualObject(u"/com/lumora/app"_s, this));
        EXPECT_TRUE(connection.registerService(u"com.lumora.app"_s));
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage&, const QDBusConnection&) override {
        QDBusConnection::disconnectFromBus(m_name);
        return true;
    }

private:
    QString m_name;
};

/// A user who has set nothing up: the program runs, and says so.
class CommandLineContract : public testing::Test {
protected:
    void startAnswering() {
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow(answering));
    }

    ProgramHarness lumora;
};

class CommandLineContractWithABriefing : public ConfiguredProgram {};

} // namespace

TEST_F(CommandLineContract, TellsItsVersion) {
    const auto outcome = lumora.run({u"--version"_s});
    static const QRegularExpression line(
        u"^lumora \\d+\\.\\d+\\.\\d+( \\([0-9a-f]{7,40}\\))?\\n$"_s);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(line.match(QString::fromUtf8(outcome.out)).hasMatch());
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLineContract, ExplainsItself) {
    const auto outcome = lumora.run({u"--help"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(outcome.out.startsWith("Usage: lumora "));
    for (const char* word :
         {"status",   "agenda",   "join",     "capture", "habit",  "chore",  "toggle",
          "show",     "hide",     "settings", "refresh", "quit",   "check",  "doctor",
          "--follow", "--format", "--now",    "--json",  "--list", "--demo", "--scenario"})
        EXPECT_TRUE(outcome.out.contains(word)) << word;
}

TEST_F(CommandLineContract, ComplainsInOneLineAboutWrongArguments) {
    for (const QStringList& arguments :
         {QStringList(u"--bogus"_s),
          {u"bogus"_s},
          {u"several\nlines"_s},
          {u"\u001b[31mcolours"_s},
          {u"toggle"_s, u"now"_s},
          {u"refresh"_s, u"now"_s},
          {u"quit"_s, u"now"_s},
          {u"status"_s, u"--format"_s},
          {u"status"_s, u"--format"_s, u"xml"_s},
          {u"--scenario"_s, u"busy"_s}}) {
        SCOPED_TRACE(arguments.join(u' ').toStdString());
        expectComplaint(lumora.run(arguments), 2);
    }
}

TEST_F(CommandLineContract, SaysWhenNothingRuns) {
    for (const QStringList& arguments :
         {QStringList(u"status"_s),
          {u"status"_s, u"--format"_s, u"json"_s},
          {u"toggle"_s},
          {u"show"_s},
          {u"hide"_s},
          {u"settings"_s},
          {u"refresh"_s},
          {u"quit"_s}}) {
        SCOPED_TRACE(arguments.join(u' ').toStdString());
        const auto outcome = lumora.run(arguments);
        expectComplaint(outcome, 3);
        EXPECT_EQ(outcome.err, "lumora: Lumora is not running\n");
    }
}

TEST_F(CommandLineContract, SaysInOneLineThatTheProgramEndedMeanwhile) {
    for (const QStringList& arguments :
         {QStringList(),
          {u"status"_s},
          {u"toggle"_s},
          {u"show"_s},
          {u"hide"_s},
          {u"settings"_s},
          {u"refresh"_s},
          {u"quit"_s}}) {
        SCOPED_TRACE(arguments.join(u' ').toStdString());
        const Vanishing running(lumora.sessionBus());
        const auto outcome = lumora.run(arguments);
        expectComplaint(outcome, 1);
        EXPECT_EQ(outcome.err, "lumora: Lumora does not answer\n");
    }
}

TEST_F(CommandLineContract, PrintsOneEmptyLineForALabelWithoutText) {
    startAnswering();
    const auto outcome = lumora.run({u"status"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out, "\n");
}

TEST_F(CommandLineContract, AnAnswerThatCannotBeWrittenIsAFailure) {
    startAnswering();
    for (const QString& command :
         {u"status"_s, u"status --format json"_s, u"--version"_s, u"--help"_s}) {
        const auto process = lumora.makeProcess();
        process->setArguments(command.split(u' '));
        process->setStandardOutputFile(u"/dev/full"_s);
        process->start();
        const Outcome outcome = ProgramHarness::finish(*process);
        expectComplaint(outcome, 1);
        EXPECT_EQ(outcome.err, "lumora: The answer could not be written: No space left on device\n")
            << command.toStdString();
    }
}

TEST_F(CommandLineContract, QuitEndsTheProgram) {
    startAnswering();
    const auto quit = lumora.run({u"quit"_s});
    EXPECT_EQ(quit.exitCode, 0) << quit.err.toStdString();
    const auto ended = lumora.waitForEnd();
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err, "");
    EXPECT_EQ(lumora.run({u"status"_s}).exitCode, 3);
}

TEST_F(CommandLineContract, ASecondStartLeavesTheFirstRunning) {
    startAnswering();
    const QString first = lumora.uniqueName();
    const auto second = lumora.run({});
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(second.out, "");
    EXPECT_EQ(second.err, "");
    EXPECT_EQ(lumora.uniqueName(), first);
    EXPECT_TRUE(lumora.comesToShow(answering));
}

TEST_F(CommandLineContract, OfTwoStartsAtOnceOneStays) {
    lumora.start();
    const auto rival = lumora.makeProcess();
    rival->start();
    ASSERT_TRUE(rival->waitForStarted(patience));
    const auto running = [&] {
        return (rival->state() == QProcess::Running) +
               (lumora.program().state() == QProcess::Running);
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return running() == 1; }, patience));
    QProcess& loser = rival->state() == QProcess::Running ? lumora.program() : *rival;
    EXPECT_EQ(ProgramHarness::finish(loser).exitCode, 0);
    EXPECT_TRUE(lumora.comesToShow(answering));

    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    EXPECT_EQ(ProgramHarness::finish(*rival).exitCode, 0);
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}

TEST_F(CommandLineContract, RunsWithoutASessionBus) {
    lumora.setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s);
    const auto connections = [probe = lumora.systemBus().connect()] {
        return probe.interface()->registeredServiceNames().value().size();
    };
    const auto before = connections();
    lumora.start();
    // It listens for the machine's waking, and lives on until it is asked to end.
    ASSERT_TRUE(QTest::qWaitFor([&] { return connections() > before; }, patience));
    expectComplaint(lumora.run({u"status"_s}), 3);
    ASSERT_EQ(lumora.program().state(), QProcess::Running) << lumora.waitForEnd().err.toStdString();
    lumora.program().terminate();
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}

TEST_F(CommandLineContractWithABriefing, StatusIsOneLineOfJson) {
    leaveMeetingsBehind();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    const auto outcome = lumora.run({u"status"_s, u"--format"_s, u"json"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out.count('\n'), 1);
    EXPECT_TRUE(outcome.out.endsWith('\n'));

    const QJsonObject status = QJsonDocument::fromJson(outcome.out).object();
    QStringList keys{u"mode"_s,    u"symbol"_s,      u"text"_s,    u"tooltip"_s,    u"state"_s,
                     u"message"_s, u"lastUpdated"_s, u"pending"_s, u"actionError"_s};
    keys.sort();
    EXPECT_EQ(status.keys(), keys);
    EXPECT_TRUE(status.value(u"tooltip"_s).toString().startsWith(u"1 of 5 habits done\n"));
    EXPECT_EQ(status.value(u"pending"_s), QJsonArray());
    EXPECT_EQ(status.value(u"actionError"_s), QJsonValue(QJsonValue::Null));
    static const QRegularExpression utc(u"^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ$"_s);
    EXPECT_TRUE(utc.match(status.value(u"lastUpdated"_s).toString()).hasMatch());
}

TEST_F(CommandLineContractWithABriefing, PrintsTheLabelAsText) {
    leaveMeetingsBehind();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    for (const QStringList& arguments :
         {QStringList(u"status"_s),
          {u"status"_s, u"--format"_s, u"text"_s},
          {u"status"_s, u"--format=text"_s}}) {
        const auto outcome = lumora.run(arguments);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.out, "1/5\n");
        EXPECT_EQ(outcome.err, "");
    }
}

TEST_F(CommandLineContractWithABriefing, PrintsTheLabelForBars) {
    leaveMeetingsBehind();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    for (const QString& bar : {u"polybar"_s, u"i3blocks"_s, u"i3status-rust"_s})
        EXPECT_EQ(lumora.run({u"status"_s, u"--format"_s, bar}).out, "1/5\n");
    const auto outcome = lumora.run({u"status"_s, u"--format"_s, u"waybar"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out.count('\n'), 1);
    const QJsonObject status = QJsonDocument::fromJson(outcome.out).object();
    EXPECT_EQ(status.value(u"text"_s), u"1/5"_s);
    EXPECT_EQ(status.value(u"class"_s), QJsonArray{u"habits"_s});
}
