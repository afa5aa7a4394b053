#include "companion/server/LoopbackServer.h"

#include "support/Patience.h"

#include <QTcpSocket>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace lumora::tests;
using namespace std::chrono_literals;

namespace {

const QByteArray head = "Host: localhost\r\nX-Api-Key: secret\r\n";

class Servers : public testing::Test {
protected:
    std::shared_ptr<const QByteArray> briefing = std::make_shared<QByteArray>("{\"a\":1}");
    std::vector<std::pair<ServiceAction, std::function<void(HttpAnswer)>>> actions;
    ServiceHandlers handlers{
        [this](const auto& done) { done(briefing); },
        [this](const ServiceAction& action, auto done) { actions.emplace_back(action, done); }};
    LoopbackServer server{"secret", handlers, {.request = 300ms, .answer = 300ms}};
    quint16 port = 0;

    void SetUp() override { port = server.start(0).value(); }

    std::unique_ptr<QTcpSocket> ask(const QByteArray& bytes) const {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(u"127.0.0.1"_s, port);
        socket->write(bytes);
        return socket;
    }

    /// All that is answered before the connection closes.
    static QByteArray answerOn(QTcpSocket& socket) {
        const bool closed = QTest::qWaitFor(
            [&] { return socket.state() == QAbstractSocket::UnconnectedState; }, patience);
        return closed ? socket.readAll() : "(nothing)";
    }

    QByteArray answerTo(const QByteArray& bytes) const { return answerOn(*ask(bytes)); }

    QByteArray get(const QByteArray& path) const {
        return answerTo("GET " + path + " HTTP/1.1\r\n" + head + "\r\n");
    }
};

} // namespace

TEST_F(Servers, HandOutTheBriefing) {
    EXPECT_EQ(
        get("/api/briefing"),
        "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 7\r\n"
        "Cache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n"
        "Content-Security-Policy: default-src 'none'; frame-ancestors 'none'\r\n"
        "Connection: close\r\n\r\n"
        "{\"a\":1}");
    const QByteArray headOnly = answerTo("HEAD /api/briefing HTTP/1.1\r\n" + head + "\r\n");
    EXPECT_TRUE(headOnly.contains("Content-Length: 7\r\n"));
    EXPECT_TRUE(headOnly.endsWith("\r\n\r\n"));
    EXPECT_TRUE(get("/api").startsWith("HTTP/1.1 404 Not Found\r\n"));
    EXPECT_FALSE(get("/api").contains("Access-Control"));
    briefing.reset();
    EXPECT_TRUE(get("/api/briefing").startsWith("HTTP/1.1 503 "));
}

TEST_F(Servers, GreetWhoOpensTheirAddress) {
    const QByteArray browser = "Host: localhost\r\nSec-Fetch-Site: none\r\n\r\n";
    const QByteArray page = answerTo("GET / HTTP/1.1\r\n" + browser);
    EXPECT_TRUE(page.startsWith(
        "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: "));
    EXPECT_TRUE(page.contains("\r\n\r\n<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.endsWith("</html>\n"));
    EXPECT_FALSE(page.contains("secret")) << "the token";
    EXPECT_FALSE(page.contains("Access-Control"));
    EXPECT_TRUE(answerTo("HEAD / HTTP/1.1\r\n" + browser).endsWith("\r\n\r\n"));
}

TEST_F(Servers, HandOutALargeBriefingWhole) {
    briefing = std::make_shared<QByteArray>(10'000'000, 'x');
    const QByteArray answer = get("/api/briefing");
    EXPECT_TRUE(answer.endsWith("\r\n\r\n" + *briefing));
}

TEST_F(Servers, AnswerActionsWhenTheyAreDone) {
    const auto socket =
        ask("POST /api/briefing/action HTTP/1.1\r\n" + head +
            "Content-Length: 27\r\n\r\n{\"type\":\"spending.refresh\"}");
    ASSERT_TRUE(QTest::qWaitFor([&] { return actions.size() == 1; }, patience));
    EXPECT_EQ(actions.front().first, ServiceAction(RefreshSpending{}));
    EXPECT_TRUE(get("/api/briefing").startsWith("HTTP/1.1 200 ")); // nobody waits meanwhile
    actions.front().second(errorAnswer(409, u"Why not"_s));
    EXPECT_TRUE(answerOn(*socket).endsWith("\r\n\r\n{\"error\":\"Why not\"}"));
}

TEST_F(Servers, OutliveWhoeverDoesNotWaitForAnAnswer) {
    const auto socket =
        ask("POST /api/briefing/action HTTP/1.1\r\n" + head +
            "Content-Length: 27\r\n\r\n{\"type\":\"spending.refresh\"}");
    ASSERT_TRUE(QTest::qWaitFor([&] { return actions.size() == 1; }, patience));
    EXPECT_EQ(answerOn(*socket), ""); // the time for the answer is over
    actions.front().second({});
    EXPECT_TRUE(get("/api/briefing").startsWith("HTTP/1.1 200 "));
}

TEST_F(Servers, TakePiecesAndRefuseWhatIsTooMuch) {
    const auto slow = ask("GET /api/briefing HTTP/1.1\r\nHost: lo");
    ASSERT_TRUE(QTest::qWaitFor([&] { return slow->bytesToWrite() == 0; }, patience));
    slow->write("calhost\r\nX-Api-Key: secret\r\n\r\n");
    EXPECT_TRUE(answerOn(*slow).startsWith("HTTP/1.1 200 "));
    EXPECT_TRUE(
        answerTo("GET / HTTP/1.1\r\nA: " + QByteArray(1'000'000, 'x')).startsWith("HTTP/1.1 431 "));
    EXPECT_TRUE(answerTo(
                    "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1000000\r\n\r\n" +
                    QByteArray(1'000'000, 'x'))
                    .startsWith("HTTP/1.1 413 "));
    EXPECT_TRUE(answerTo("nonsense\r\n\r\n").startsWith("HTTP/1.1 400 "));
}

TEST_F(Servers, GiveUpWhoeverSaysNothing) {
    EXPECT_EQ(answerTo(""), "");
    EXPECT_EQ(answerTo("GET /api/briefing HTTP/1.1\r\n"), "");
}

TEST_F(Servers, ServeOthersWhenAllPlacesAreTaken) {
    std::vector<std::unique_ptr<QTcpSocket>> idle;
    for (std::size_t i = 0; i < LoopbackServer::mostConnections; ++i)
        idle.push_back(ask("GET"));
    EXPECT_TRUE(get("/api/briefing").startsWith("HTTP/1.1 200 "));
}

TEST_F(Servers, NoticeThatAPortIsTaken) {
    LoopbackServer second("secret", handlers);
    EXPECT_EQ(second.start(port).error(), u"port %1 is already in use"_s.arg(port));
}
