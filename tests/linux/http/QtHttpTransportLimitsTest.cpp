#include "linux/http/HttpFetch.h"
#include "support/Patience.h"
#include "support/ScriptedServer.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr HttpLimits smallBodies{5s, 10s, 1000};

} // namespace

TEST(QtHttpTransportLimits, AreFifteenSecondsThirtySecondsAndSixteenMebibytes) {
    constexpr HttpLimits limits;
    EXPECT_EQ(limits.inactivity, 15s);
    EXPECT_EQ(limits.total, 30s);
    EXPECT_EQ(limits.bodyBytes, 16'777'216);
}

TEST(QtHttpTransportLimits, SilenceEndsTheExchange) {
    ScriptedServer server([](QTcpSocket&, const QByteArray&) {});
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), {500ms, 10s});
    EXPECT_EQ(summary(outcome), "failed: The request timed out");
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.requests().size() == 1; }, patience));
}

TEST(QtHttpTransportLimits, SilenceInTheMiddleOfTheBodyEndsTheExchange) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
    });
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), {500ms, 10s});
    EXPECT_EQ(summary(outcome), "failed: The request timed out");
}

TEST(QtHttpTransportLimits, ADripIsNoSilenceButMeetsTheDeadline) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        auto* const drip = new QTimer(&connection);
        QObject::connect(
            drip, &QTimer::timeout, &connection, [&connection] { connection.write("x"); });
        drip->start(20ms);
    });
    QElapsedTimer elapsed;
    elapsed.start();
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), {1s, 1500ms});
    EXPECT_EQ(summary(outcome), "failed: The request timed out");
    EXPECT_GE(elapsed.elapsed(), 1450);
}

TEST(QtHttpTransportLimits, ABodyUpToTheLimitIsTaken) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("200 OK", QByteArray(1000, 'x'))));
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), smallBodies);
    ASSERT_TRUE(outcome) << summary(outcome);
    EXPECT_EQ(outcome->body.size(), 1000);
}

TEST(QtHttpTransportLimits, ABodyPastTheLimitEndsTheExchange) {
    for (const QByteArray status : {"200 OK", "404 Not Found"}) {
        ScriptedServer server(
            ScriptedServer::always(ScriptedServer::answer(status, QByteArray(1001, 'x'))));
        EXPECT_EQ(
            summary(fetch(get(server.url(u"/"_s)), smallBodies)),
            "too large: The answer is too large");
    }
}

TEST(QtHttpTransportLimits, AnEndlessBodyEndsAtTheLimit) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\n\r\n");
        QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection, [&connection] {
            connection.write(QByteArray(64 * 1024, 'x'));
        });
    });
    EXPECT_EQ(
        summary(fetch(get(server.url(u"/"_s)), {5s, 10s, 3'000'000})),
        "too large: The answer is too large");
}

TEST(QtHttpTransportLimits, ALargeBodyArrivesWhole) {
    QByteArray body;
    for (int line = 0; body.size() < 16 * 1024 * 1024 - 16; ++line)
        body += QByteArray::number(line) + '\n';
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", body)));
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)));
    ASSERT_TRUE(outcome) << summary(outcome);
    EXPECT_TRUE(outcome->body == body);
}

TEST(QtHttpTransportLimits, ACompressedBodyCountsDecompressed) {
    const auto zlib = [](qsizetype size) { return qCompress(QByteArray(size, 'x')).mid(4); };
    const auto answer = [](const QByteArray& body) {
        return ScriptedServer::answer("200 OK", body, "Content-Encoding: deflate\r\n");
    };
    const HttpLimits limits{5s, 10s, 1'000'000};
    {
        ScriptedServer server(ScriptedServer::always(answer(zlib(1'000'000))));
        const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), limits);
        ASSERT_TRUE(outcome) << summary(outcome);
        EXPECT_TRUE(outcome->body == QByteArray(1'000'000, 'x'));
    }
    for (const qsizetype size : {1'000'001, 50'000'000}) {
        ScriptedServer server(ScriptedServer::always(answer(zlib(size))));
        EXPECT_EQ(
            summary(fetch(get(server.url(u"/"_s)), limits)), "too large: The answer is too large");
    }
}
