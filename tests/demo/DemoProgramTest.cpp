#include "demo/DemoServer.h"
#include "demo/DemoService.h"

#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <httplib.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;

namespace {

constexpr int kLongEnough = 20'000;
constexpr int kAtOnce = 2500;

class DemoProgram : public testing::Test {
protected:
    QProcess program;
    QString endpoint;
    QString token;

    ~DemoProgram() override {
        program.kill();
        program.waitForFinished();
    }

    void run(const QStringList& arguments) {
        program.start(QStringLiteral(LUMORA_DEMO_SERVICE), arguments);
        ASSERT_TRUE(program.waitForStarted());
    }

    void runToEnd(const QStringList& arguments) {
        run(arguments);
        ASSERT_TRUE(program.waitForFinished(kLongEnough));
        ASSERT_EQ(program.exitStatus(), QProcess::NormalExit);
    }

    /// Starts the program and reads the two lines it says.
    void serve(const QStringList& arguments) {
        run(arguments);
        QByteArray said;
        while (said.count('\n') < 2) {
            ASSERT_TRUE(program.waitForReadyRead(kLongEnough));
            said += program.readAllStandardOutput();
        }
        static const QRegularExpression lines(
            u"^endpoint (http://127\\.0\\.0\\.1:\\d+/api/briefing)\\ntoken (\\S+)\\n$"_s);
        const auto match = lines.match(QString::fromUtf8(said));
        ASSERT_TRUE(match.hasMatch()) << said.toStdString();
        endpoint = match.captured(1);
        token = match.captured(2);
    }

    httplib::Result get(const std::string& path) const {
        const auto host = endpoint.left(endpoint.indexOf(u"/api"_s)).toStdString();
        return httplib::Client(host).Get(path, {{"X-Api-Key", token.toStdString()}});
    }

    void expectOneLineOfComplaint() {
        const auto complaint = program.readAllStandardError();
        EXPECT_TRUE(complaint.startsWith("lumora-demo-service: ")) << complaint.toStdString();
        EXPECT_EQ(complaint.count('\n'), 1) << complaint.toStdString();
        EXPECT_EQ(program.readAllStandardOutput(), "");
    }

    void expectCleanEndAtOnce() {
        ASSERT_TRUE(program.state() == QProcess::NotRunning || program.waitForFinished(kAtOnce));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_EQ(program.readAllStandardError(), "");
    }
};

} // namespace

TEST_F(DemoProgram, ServesWhatItSaysUntilItsInputCloses) {
    serve({u"--until-stdin-closes"_s});
    const auto answer = get("/api/briefing");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    program.write("typing does not end it\n");
    ASSERT_TRUE(program.waitForBytesWritten());
    EXPECT_EQ(get("/api/briefing")->status, 200);
    program.closeWriteChannel();
    expectCleanEndAtOnce();
}

TEST_F(DemoProgram, RunsOnWithoutInputUnlessTold) {
    program.setStandardInputFile(QProcess::nullDevice());
    serve({});
    EXPECT_EQ(get("/api/briefing")->status, 200);
    program.terminate();
    expectCleanEndAtOnce();
}

TEST_F(DemoProgram, EndsOnASignalWithASlowAnswerUnderWay) {
    serve({u"--scenario"_s, u"slow"_s});
    httplib::Client client(endpoint.left(endpoint.indexOf(u"/api"_s)).toStdString());
    client.set_read_timeout(0, 100'000); // long enough to be accepted, far too short for an answer
    EXPECT_FALSE(client.Get("/api/briefing", {{"X-Api-Key", token.toStdString()}}));
    program.terminate();
    expectCleanEndAtOnce();
}

TEST_F(DemoProgram, TakesTheTokenTimeAndScenarioItIsGiven) {
    serve({u"--token"_s, u"given"_s, u"--now"_s, u"2025-03-04T09:29:30Z"_s, u"--scenario=quiet"_s});
    EXPECT_EQ(token, u"given"_s);
    const auto status = QJsonDocument::fromJson(QByteArray::fromStdString(get("/control")->body));
    EXPECT_EQ(status[u"scenario"_s].toString(), u"quiet"_s);
    EXPECT_EQ(status[u"dayFrom"_s].toString(), u"2025-03-04T09:30:00Z"_s);
}

TEST_F(DemoProgram, MakesUpAnotherTokenEachTime) {
    serve({u"--until-stdin-closes"_s});
    const auto first = token;
    EXPECT_GE(first.size(), 32);
    program.closeWriteChannel();
    expectCleanEndAtOnce();
    serve({});
    EXPECT_NE(token, first);
}

TEST_F(DemoProgram, ComplainsAboutItsArguments) {
    for (const auto& arguments :
         {QStringList(u"--bogus"_s), {u"--port"_s, u"99999"_s}, {u"--scenario=a\nb"_s}}) {
        runToEnd(arguments);
        EXPECT_EQ(program.exitCode(), 2);
        expectOneLineOfComplaint();
    }
}

TEST_F(DemoProgram, ComplainsAboutAPortInUse) {
    DemoService service(DemoScenario::Empty, "key", DemoClock(), QTimeZone::utc());
    DemoServer server(service);
    runToEnd({u"--port"_s, QString::number(server.start(0).value())});
    EXPECT_EQ(program.exitCode(), 1);
    expectOneLineOfComplaint();
}

TEST_F(DemoProgram, ExplainsItself) {
    runToEnd({u"--help"_s});
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(program.readAllStandardOutput().startsWith("Usage: lumora-demo-service "));
    runToEnd({u"--version"_s});
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(program.readAllStandardOutput().startsWith("lumora-demo-service 0."));
}
