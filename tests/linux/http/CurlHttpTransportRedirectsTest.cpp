#include "linux/http/HttpFetch.h"
#include "support/ScriptedServer.h"

#include <QTimer>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

TEST(CurlHttpTransportRedirects, TheDeadlineCountsAllRedirectsTogether) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) {
        QTimer::singleShot(100ms, &connection, [&connection] {
            connection.write(ScriptedServer::answer("302 Found", "", "Location: /on\r\n"));
            connection.disconnectFromHost();
        });
    });
    const HttpOutcome outcome = fetch(get(server.url(u"/"_s)), {.inactivity = 5s, .total = 1s});
    EXPECT_EQ(summary(outcome), "failed: The request timed out");
    EXPECT_GE(server.requests().size(), 2);
}

TEST(CurlHttpTransportRedirects, FollowsRedirectsWithinTheOrigin) {
    for (const QByteArray status : {"301 M", "302 F", "303 S", "307 T", "308 P"}) {
        ScriptedServer server([status](QTcpSocket& connection, const QByteArray& request) {
            connection.write(
                request.contains("/start")
                    ? ScriptedServer::answer(status, "moved", "Location: /end?x=y\r\n")
                    : ScriptedServer::answer("200 OK", "here"));
            connection.disconnectFromHost();
        });
        EXPECT_EQ(summary(fetch(get(server.url(u"/start"_s)))), "200 here") << status.data();
        ASSERT_EQ(server.requests().size(), 2);
        EXPECT_TRUE(server.requests()[1].startsWith("GET /end?x=y HTTP/1.1"));
        EXPECT_EQ(header(server.requests()[1], "X-Api-Key"), "T");
    }
}

TEST(CurlHttpTransportRedirects, A307RepeatsThePostWithItsBodyA303DoesNot) {
    QByteArray status;
    ScriptedServer server([&status](QTcpSocket& connection, const QByteArray& request) {
        connection.write(
            request.contains("/start")
                ? ScriptedServer::answer(status, "moved", "Location: /end\r\n")
                : ScriptedServer::answer("200 OK", "here"));
        connection.disconnectFromHost();
    });
    status = "307 Temporary Redirect";
    EXPECT_EQ(summary(fetch(post(server.url(u"/start"_s), "{1}"))), "200 here");
    status = "303 See Other";
    EXPECT_EQ(summary(fetch(post(server.url(u"/start"_s), "{2}"))), "200 here");
    ASSERT_EQ(server.requests().size(), 4);
    EXPECT_TRUE(server.requests()[1].startsWith("POST /end "));
    EXPECT_TRUE(server.requests()[1].endsWith("{1}"));
    EXPECT_TRUE(server.requests()[3].startsWith("GET /end "));
    EXPECT_TRUE(server.requests()[3].endsWith("\r\n\r\n"));
    EXPECT_EQ(header(server.requests()[3], "Content-Type"), std::nullopt);
}

TEST(CurlHttpTransportRedirects, TheTokenNeverLeavesTheOrigin) {
    ScriptedServer other(ScriptedServer::always(ScriptedServer::answer("200 OK", "elsewhere")));
    for (const QByteArray host : {"127.0.0.1", "localhost"}) {
        const QByteArray location = "http://" + host + ":" + QByteArray::number(other.port());
        for (const QByteArray status : {"302 Found", "307 Temporary Redirect"}) {
            ScriptedServer server(ScriptedServer::always(
                ScriptedServer::answer(status, "own body", "Location: " + location + "\r\n")));
            const std::string expected = status.left(3).toStdString() + " own body";
            EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), expected);
            EXPECT_EQ(summary(fetch(post(server.url(u"/"_s), "{}"))), expected);
            EXPECT_EQ(server.requests().size(), 2);
        }
    }
    EXPECT_EQ(other.connectionCount(), 0);
}

TEST(CurlHttpTransportRedirects, GivesUpOnARedirectLoop) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("302 Found", "round", "Location: /\r\n")));
    EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "302 round");
    EXPECT_EQ(server.requests().size(), 21);
}
