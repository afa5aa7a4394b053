#include "demo/DemoServer.h"

#include "DemoClient.h"
#include "demo/DemoService.h"
#include "support/Patience.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <atomic>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;
using namespace lumora::tests;

namespace {

/// Less than the server waits for a client that is silent.
constexpr int kServerAtOnce = 8000;

class DemoServerTest : public testing::Test {
protected:
    std::atomic<int> timesRead = 0;
    std::unique_ptr<DemoService> service;
    std::unique_ptr<DemoServer> server;
    quint16 port = 0;

    void serve(DemoScenario scenario) {
        const auto source = [this] {
            ++timesRead;
            timesRead.notify_all();
            return DemoClock::systemTime();
        };
        service =
            std::make_unique<DemoService>(scenario, "key", DemoClock(source), QTimeZone::utc());
        server = std::make_unique<DemoServer>(*service);
        const auto bound = server->start(0);
        ASSERT_TRUE(bound) << bound.error().toStdString();
        port = *bound;
    }

    DemoClient client(const QByteArray& token = "key") const { return DemoClient(port, token); }

    /// Stops the server; whether that took no longer than a moment.
    bool stopsAtOnce() {
        QElapsedTimer timer;
        timer.start();
        server->stop();
        return timer.elapsed() < kServerAtOnce;
    }
};

QJsonDocument jsonOf(const std::optional<DemoReply>& reply) {
    return QJsonDocument::fromJson(reply ? reply->body : QByteArray());
}

} // namespace

TEST_F(DemoServerTest, ServesTheBriefing) {
    serve(DemoScenario::Busy);
    const auto answer = client().get("/api/briefing");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->header("content-type"), "application/json");
    EXPECT_EQ(jsonOf(answer)[u"habits"_s][u"total"_s].toInteger(), 5);
}

TEST_F(DemoServerTest, AnswersHeadWithoutTheBody) {
    serve(DemoScenario::Busy);
    const auto answer = client().ask("HEAD", "/api/briefing");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->body, "");
    const auto whole = client().get("/api/briefing");
    EXPECT_EQ(answer->header("content-length").toInt(), whole->body.size());
}

TEST_F(DemoServerTest, TakesActions) {
    serve(DemoScenario::Busy);
    const auto answer =
        client().post("/api/briefing/action", R"({"type":"capture","text":"naïve 🛒"})");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->body, R"({"ok":true})");
    const auto inbox = client().get("/api/inbox");
    ASSERT_TRUE(inbox);
    EXPECT_EQ(jsonOf(inbox)[0][u"text"_s].toString(), u"naïve 🛒"_s);
}

TEST_F(DemoServerTest, RefusalsAreJson) {
    serve(DemoScenario::Busy);
    const auto good = client();
    const std::pair<std::optional<DemoReply>, int> refusals[] = {
        {client("other").get("/api/briefing"), 401},
        {client("").get("/api/briefing"), 401},
        {good.get("/nothing"), 404},
        {good.ask("PUT", "/api/briefing", "{}"), 405},
        {good.ask("DELETE", "/api/briefing"), 405},
        {good.post("/api/briefing/action", "{}"), 400},
        {good.post("/api/briefing/action", QByteArray(32 << 20, 'x')), 413},
    };
    for (const auto& [answer, status] : refusals) {
        ASSERT_TRUE(answer) << status;
        EXPECT_EQ(answer->status, status);
        EXPECT_TRUE(jsonOf(answer)[u"error"_s].isString()) << answer->body.toStdString();
    }
    EXPECT_EQ(good.ask("DELETE", "/api/briefing")->header("allow"), "GET, HEAD");
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
        const auto first = client().get("/api/briefing");
        ASSERT_TRUE(first);
        EXPECT_EQ(first->status, 503);
        const auto second = client().get("/api/briefing");
        EXPECT_FALSE(second);
        const auto third = client().get("/api/briefing");
        ASSERT_TRUE(third);
        EXPECT_EQ(third->status, 200);
    }
}

TEST_F(DemoServerTest, HangingUpSendsNotAByte) {
    serve(DemoScenario::Flaky);
    ASSERT_EQ(client().get("/api/briefing")->status, 503);
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    socket.write("GET /api/briefing HTTP/1.1\r\nHost: localhost\r\nX-Api-Key: key\r\n\r\n");
    ASSERT_TRUE(socket.waitForDisconnected(patience));
    EXPECT_EQ(socket.readAll(), "");
    EXPECT_EQ(client().get("/api/briefing")->status, 200);
}

TEST_F(DemoServerTest, ALoginPage) {
    serve(DemoScenario::Html);
    const auto answer = client().get("/api/briefing");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->header("content-type"), "text/html; charset=utf-8");
}

TEST_F(DemoServerTest, ManyAtOnce) {
    serve(DemoScenario::Busy);
    std::vector<DemoClient::Exchange> exchanges;
    for (int i = 0; i < 24; ++i) {
        exchanges.push_back(
            client().begin("POST", "/api/briefing/action", R"({"type":"capture","text":"one"})"));
    }
    for (const auto& exchange : exchanges) {
        const auto answer = DemoClient::end(exchange);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 200);
    }
    EXPECT_EQ(jsonOf(client().get("/api/inbox")).array().size(), 24);
}

TEST_F(DemoServerTest, StopsWithASlowAnswerUnderWay) {
    serve(DemoScenario::Slow);
    const int before = timesRead;
    const auto exchange = client().begin("GET", "/api/briefing");
    timesRead.wait(before); // the request is being answered
    EXPECT_TRUE(stopsAtOnce());
    EXPECT_FALSE(DemoClient::end(exchange));
}

TEST_F(DemoServerTest, StopsWithASilentClientConnected) {
    serve(DemoScenario::Busy);
    QTcpSocket silent;
    silent.connectToHost(u"127.0.0.1"_s, port);
    ASSERT_TRUE(silent.waitForConnected(patience));
    QTcpSocket halfway;
    halfway.connectToHost(u"127.0.0.1"_s, port);
    halfway.write("GET /api/bri");
    ASSERT_TRUE(halfway.waitForBytesWritten(patience));
    EXPECT_EQ(client().get("/api/briefing")->status, 200);
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
    ASSERT_TRUE(client().get("/api/briefing"));
    DemoServer second(*service);
    const auto refused = second.start(port);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), u"Port %1 is already in use"_s.arg(port));
    server->stop();
    DemoServer third(*service);
    EXPECT_EQ(third.start(port), port);
    EXPECT_EQ(client().get("/api/briefing")->status, 200);
}
