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

constexpr HttpLimits smallBodies{.inactivity = 5s, .total = 10s, .bodyBytes = 1000};

} // namespace

TEST(CurlHttpTransportLimits, AreFifteenSecondsThirtySecondsAndSixteenMebibytes) {
    constexpr HttpLimits limits;
    EXPECT_EQ(limits.inactivity, 15s);
    EXPECT_EQ(limits.total, 30s);
    EXPECT_EQ(limits.bodyBytes, 16'777'216);
}

TEST(CurlHttpTransportLimits, SilenceEndsTheExchange) {
    ScriptedServer server([](QTcpSocket&, const QByteArray&) {});
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), {.inactivity = 500ms, .total = 10s});
    EXPECT_EQ(summary(outcome), "failed: The request timed out");
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.requests().size() == 1; }, patience));
}

TEST(CurlHttpTransportLimits, SilenceInTheMiddleOfTheBodyEndsTheExchange) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
    });
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), {.inactivity = 500ms, .total = 10s});
    EXPECT_EQ(summary(outcome), "failed: The request timed out");
}

TEST(CurlHttpTransportLimits, ADripIsNoSilenceButMeetsTheDeadline) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        auto* const drip = new QTimer(&connection);
        QObject::connect(
            drip, &QTimer::timeout, &connection, [&connection] { connection.write("x"); });
        drip->start(20ms);
    });
    QElapsedTimer elapsed;
    elapsed.start();
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), {.inactivity = 1s, .total = 1500ms});
    EXPECT_EQ(summary(outcome), "failed: The request timed out");
    EXPECT_GE(elapsed.elapsed(), 1450);
}

TEST(CurlHttpTransportLimits, ABodyUpToTheLimitIsTaken) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("200 OK", QByteArray(1000, 'x'))));
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), smallBodies);
    ASSERT_TRUE(outcome) << summary(outcome);
    EXPECT_EQ(outcome->body.size(), 1000);
}

TEST(CurlHttpTransportLimits, ABodyPastTheLimitEndsTheExchange) {
    for (const QByteArray status : {"200 OK", "404 Not Found"}) {
        ScriptedServer server(
            ScriptedServer::always(ScriptedServer::answer(status, QByteArray(1001, 'x'))));
        EXPECT_EQ(
            summary(fetch(get(server.url(u"/"_s)), smallBodies)),
            "too large: The answer is too large");
    }
}

TEST(CurlHttpTransportLimits, AnEndlessBodyEndsAtTheLimit) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\n\r\n");
        QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection, [&connection] {
            connection.write(QByteArray(64 * 1024, 'x'));
        });
    });
    EXPECT_EQ(
        summary(fetch(get(server.url(u"/"_s)), {.bodyBytes = 3'000'000})),
        "too large: The answer is too large");
}

TEST(CurlHttpTransportLimits, ALargeBodyArrivesWhole) {
    QByteArray body;
    for (int line = 0; body.size() < 16 * 1024 * 1024 - 16; ++line)
        body += QByteArray::number(line) + '\n';
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", body)));
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)));
    ASSERT_TRUE(outcome) << summary(outcome);
    EXPECT_TRUE(outcome->body == body);
}

TEST(CurlHttpTransportLimits, AHeadWithoutEndIsRefusedAtOnce) {
    const QByteArray line = "X-Filler: " + QByteArray(90, 'x') + "\r\n";
    const QByteArray interim = "HTTP/1.1 103 Early Hints\r\n" + line + "\r\n";
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"HTTP/1.1 200 OK\r\nX-Filler: ", QByteArray(100, 'x')}, // one line
        {"HTTP/1.1 200 OK\r\n", line},                           // many
        {interim, interim},                                      // interim answers
    };
    for (const auto& [start, filler] : rows) {
        ScriptedServer server([&](QTcpSocket& connection, const QByteArray&) {
            connection.write(start);
            QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection, [&] {
                connection.write(filler.repeated(500));
            });
        });
        EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "too large: The answer is too large")
            << start.constData();
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST(CurlHttpTransportLimits, WhatIsNeitherHeadNorBodyIsBoundedToo) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5;x=");
        QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection, [&connection] {
            connection.write(QByteArray(64 * 1024, 'x'));
        });
    });
    EXPECT_EQ(
        summary(fetch(get(server.url(u"/"_s)), {.receivedBytes = 3'000'000})),
        "too large: The answer is too large");
}
