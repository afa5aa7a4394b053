#include "demo/DemoServer.h"

#include "demo/DemoService.h"
#include "support/Patience.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpSocket>

#include <gtest/gtest.h>
#include <httplib.h>

#include <atomic>
#include <future>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;

namespace {

/// Less than the server waits for a client that is silent.
constexpr int kServerAtOnce = 8000;

class DemoServerTest : public testing::Test {
protected:
    std::atomic<int> timesRead = 0;
    std::unique_ptr<DemoService> service;
    std::unique_ptr<DemoServer> server;
    quint16 port = 0;

    void serve(DemoScenario scenario, std::chrono::seconds clientPatience = 10s) {
        const auto source = [this] {
            ++timesRead;
            timesRead.notify_all();
            return DemoClock::systemTime();
        };
        service =
            std::make_unique<DemoService>(scenario, "key", DemoClock(source), QTimeZone::utc());
        server = std::make_unique<DemoServer>(*service, clientPatience);
        const auto bound = server->start(0);
        ASSERT_TRUE(bound) << bound.error().toStdString();
        port = *bound;
    }

    httplib::Client client(const std::string& token = "key") const {
        httplib::Client result("127.0.0.1", port);
        result.set_default_headers({{"X-Api-Key", token}});
        result.set_read_timeout(patience / 1000);
        return result;
    }

    /// Stops the server; whether that took no longer than a moment.
    bool stopsAtOnce() {
        QElapsedTimer timer;
        timer.start();
        server->stop();
        return timer.elapsed() < kServerAtOnce;
    }
};

QJsonDocument jsonOf(const httplib::Result& result) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(result->body));
}

} // namespace

TEST_F(DemoServerTest, ServesTheBriefing) {
    serve(DemoScenario::Busy);
    const auto answer = client().Get("/api/briefing");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->get_header_value("Content-Type"), "application/json");
    EXPECT_EQ(jsonOf(answer)[u"habits"_s][u"total"_s].toInteger(), 5);
}

TEST_F(DemoServerTest, AnswersHeadWithoutTheBody) {
    serve(DemoScenario::Busy);
    const auto answer = client().Head("/api/briefing");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->body, "");
}

TEST_F(DemoServerTest, TakesActions) {
    serve(DemoScenario::Busy);
    const auto answer = client().Post(
        "/api/briefing/action", R"({"type":"capture","text":"naïve 🛒"})", "application/json");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->body, R"({"ok":true})");
    const auto inbox = client().Get("/api/inbox");
    ASSERT_TRUE(inbox);
    EXPECT_EQ(jsonOf(inbox)[0][u"text"_s].toString(), u"naïve 🛒"_s);
}

TEST_F(DemoServerTest, RefusalsAreJson) {
    serve(DemoScenario::Busy);
    auto good = client();
    const std::pair<httplib::Result, int> refusals[] = {
        {client("other").Get("/api/briefing"), 401},
        {httplib::Client("127.0.0.1", port).Get("/api/briefing"), 401},
        {good.Get("/nothing"), 404},
        {good.Put("/api/briefing", "{}", "application/json"), 405},
        {good.Delete("/api/briefing"), 405},
        {good.Post("/api/briefing/action", "{}", "application/json"), 400},
        {good.Post("/api/briefing/action", std::string(2 << 20, 'x'), "application/json"), 413},
    };
    for (const auto& [answer, status] : refusals) {
        ASSERT_TRUE(answer) << status;
        EXPECT_EQ(answer->status, status);
        EXPECT_TRUE(jsonOf(answer)[u"error"_s].isString()) << answer->body;
    }
    EXPECT_EQ(good.Delete("/api/briefing")->get_header_value("Allow"), "GET, HEAD");
}

TEST_F(DemoServerTest, WhatIsNotHttpIsRefused) {
    serve(DemoScenario::Busy);
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    socket.write("BREW /pot COFFEE/1.0\r\n\r\n");
    ASSERT_TRUE(socket.waitForDisconnected(patience) || socket.bytesAvailable() > 0);
    EXPECT_TRUE(socket.readAll().startsWith("HTTP/1.1 400 "));
}

TEST_F(DemoServerTest, TheFlakySequenceOnTheWire) {
    serve(DemoScenario::Flaky);
    for (int round = 0; round < 2; ++round) {
        const auto first = client().Get("/api/briefing");
        ASSERT_TRUE(first);
        EXPECT_EQ(first->status, 503);
        const auto second = client().Get("/api/briefing");
        EXPECT_FALSE(second);
        const auto third = client().Get("/api/briefing");
        ASSERT_TRUE(third);
        EXPECT_EQ(third->status, 200);
    }
}

TEST_F(DemoServerTest, BreakingOffSendsNoBody) {
    serve(DemoScenario::Flaky);
    ASSERT_EQ(client().Get("/api/briefing")->status, 503);
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    socket.write("GET /api/briefing HTTP/1.1\r\nHost: localhost\r\nX-Api-Key: key\r\n\r\n");
    ASSERT_TRUE(socket.waitForDisconnected(patience));
    EXPECT_TRUE(socket.readAll().endsWith("\r\n\r\n"));
    EXPECT_EQ(client().Get("/api/briefing")->status, 200);
}

TEST_F(DemoServerTest, ALoginPage) {
    serve(DemoScenario::Html);
    const auto answer = client().Get("/api/briefing");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->get_header_value("Content-Type"), "text/html; charset=utf-8");
}

TEST_F(DemoServerTest, ManyAtOnce) {
    serve(DemoScenario::Busy);
    std::vector<std::future<int>> answers;
    constexpr int count = 8; // the library's queue of five is overrun by many more
    for (int i = 0; i < count; ++i) {
        answers.push_back(std::async(std::launch::async, [this] {
            const auto answer = client().Post(
                "/api/briefing/action", R"({"type":"capture","text":"one"})", "application/json");
            return answer ? answer->status : -int(answer.error());
        }));
    }
    for (auto& answer : answers)
        EXPECT_EQ(answer.get(), 200);
    EXPECT_EQ(jsonOf(client().Get("/api/inbox")).array().size(), count);
}

TEST_F(DemoServerTest, StopsWithASlowAnswerUnderWay) {
    serve(DemoScenario::Slow);
    const int before = timesRead;
    auto answer = std::async(std::launch::async, [this] { return client().Get("/api/briefing"); });
    timesRead.wait(before); // the request is being answered
    EXPECT_TRUE(stopsAtOnce());
    EXPECT_FALSE(answer.get());
}

TEST_F(DemoServerTest, StopsWithASilentClientConnected) {
    serve(DemoScenario::Busy, 1s);
    QTcpSocket silent;
    silent.connectToHost(u"127.0.0.1"_s, port);
    ASSERT_TRUE(silent.waitForConnected(patience));
    QTcpSocket halfway;
    halfway.connectToHost(u"127.0.0.1"_s, port);
    halfway.write("GET /api/bri");
    ASSERT_TRUE(halfway.waitForBytesWritten(patience));
    EXPECT_EQ(client().Get("/api/briefing")->status, 200);
    EXPECT_TRUE(stopsAtOnce());
    EXPECT_TRUE(
        silent.state() == QAbstractSocket::UnconnectedState ||
        silent.waitForDisconnected(patience));
}

TEST_F(DemoServerTest, StopsRightAfterTheStart) {
    for (int i = 0; i < 20; ++i) {
        serve(DemoScenario::Busy);
        ASSERT_TRUE(stopsAtOnce());
    }
}

TEST_F(DemoServerTest, APortInUseIsNoticedAndFreeAgainAfterwards) {
    serve(DemoScenario::Busy);
    ASSERT_TRUE(client().Get("/api/briefing"));
    DemoServer second(*service);
    const auto refused = second.start(port);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), u"Port %1 is already in use"_s.arg(port));
    server->stop();
    DemoServer third(*service);
    EXPECT_EQ(third.start(port), port);
    EXPECT_EQ(client().Get("/api/briefing")->status, 200);
}
