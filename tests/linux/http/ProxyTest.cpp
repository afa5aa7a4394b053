#include "linux/http/HttpFetch.h"
#include "support/ScopedEnvironment.h"
#include "support/TestCertificates.h"

#include <QSslServer>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

// A proxy that answers every CONNECT alike.
class Proxy : public testing::Test {
protected:
    QByteArray address() const { return "127.0.0.1:" + QByteArray::number(proxy.port()); }

    QByteArray answer = ScriptedServer::answer("407 Proxy Authentication Required", "no");
    ScriptedServer proxy{[this](QTcpSocket& connection, const QByteArray&) {
        connection.write(answer);
        connection.disconnectFromHost();
    }};
    ScopedEnvironment noProxy{"no_proxy", std::nullopt};
    ScopedEnvironment noProxyLarge{"NO_PROXY", std::nullopt};
};

const HttpLimits brief{.inactivity = std::chrono::milliseconds(300)};
const QUrl outside(u"https://service.invalid/x"_s);

} // namespace

TEST_F(Proxy, EverySpellingIsTaken) {
    for (const char* const name : {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}) {
        for (const QByteArray& value : {address(), "http://" + address(), address() + "/"}) {
            const ScopedEnvironment named(name, value);
            EXPECT_EQ(summary(fetch(get(outside))), "failed: The proxy answered 407");
        }
    }
    EXPECT_EQ(proxy.requests().size(), 12);
    EXPECT_EQ(proxy.connectionCount(), 12);
}

TEST_F(Proxy, SeesTheHostAndNeverTheToken) {
    const ScopedEnvironment named("https_proxy", address());
    fetch(post(outside, "secret thought"));
    const QByteArray request = proxy.requests().value(0);
    EXPECT_TRUE(request.startsWith("CONNECT service.invalid:443 HTTP/1.1\r\n"));
    EXPECT_EQ(header(request, "X-Api-Key"), std::nullopt);
    EXPECT_FALSE(request.contains("secret"));
}

TEST_F(Proxy, NothingUnencryptedGoesThroughOne) {
    const ScopedEnvironment http("http_proxy", address());
    const ScopedEnvironment all("all_proxy", address());
    EXPECT_EQ(
        summary(fetch(get(QUrl(u"http://service.invalid/x"_s)))),
        "failed: Host service.invalid not found");
    EXPECT_EQ(proxy.connectionCount(), 0);
}

TEST_F(Proxy, WhatStaysOnThisComputerGoesDirect) {
    const ScopedEnvironment http("http_proxy", address());
    const ScopedEnvironment https("https_proxy", address());
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "direct")));
    for (const QString& host : {u"127.0.0.1"_s, u"localhost"_s}) {
        QUrl url = server.url(u"/"_s);
        url.setHost(host);
        EXPECT_EQ(summary(fetch(get(url))), "200 direct");
        url.setScheme(u"https"_s);
        EXPECT_FALSE(fetch(get(url), brief)); // it speaks no TLS
    }
    EXPECT_EQ(proxy.connectionCount(), 0);
}

TEST_F(Proxy, IsPassedByWhereNoProxySaysSo) {
    const ScopedEnvironment named("https_proxy", address());
    for (const char* const name : {"no_proxy", "NO_PROXY"}) {
        for (const QByteArray value :
             {"service.invalid", ".invalid", "example.org,service.invalid", "*"}) {
            const ScopedEnvironment passed(name, value);
            EXPECT_EQ(summary(fetch(get(outside))), "failed: Host service.invalid not found")
                << value.constData();
        }
    }
    EXPECT_EQ(proxy.connectionCount(), 0);
}

TEST_F(Proxy, FaultsEndTheExchange) {
    const ScopedEnvironment named("https_proxy", address());
    const std::pair<QByteArray, std::string> rows[] = {
        {"", "failed: Connection closed"},
        {"SSH-2.0-OpenSSH_9.2p1\r\n", "failed: Connection closed"},
        {ScriptedServer::answer("502 Bad Gateway", "down"), "failed: The proxy answered 502"},
        {ScriptedServer::answer("302 Found", "", "Location: http://127.0.0.1/\r\n"),
         "failed: The proxy answered 302"},
        {"HTTP/1.1 200 Connection established\r\n\r\n", "failed: SSL handshake failed"},
        {"HTTP/1.1 200 OK\r\n\r\nplain text, not TLS at all",
         "failed: SSL handshake failed: wrong version number"},
    };
    for (const auto& [bytes, outcome] : rows) {
        answer = bytes;
        EXPECT_EQ(summary(fetch(get(outside))), outcome) << bytes.constData();
    }
    const ScopedEnvironment nobody("https_proxy", "http://proxy.invalid:3128");
    EXPECT_EQ(summary(fetch(get(outside))), "failed: Proxy not found");
}

TEST_F(Proxy, AHeadWithoutEndIsRefused) {
    const ScopedEnvironment named("https_proxy", address());
    answer = "HTTP/1.1 200 OK\r\n" + QByteArray("X-Filler: x\r\n").repeated(10'000);
    EXPECT_EQ(summary(fetch(get(outside))), "too large: The answer is too large");
}

TEST_F(Proxy, ThatHangsEndsByTheTimeOut) {
    ScriptedServer silent([](QTcpSocket&, const QByteArray&) {});
    const ScopedEnvironment hung("https_proxy", "127.0.0.1:" + QByteArray::number(silent.port()));
    EXPECT_EQ(summary(fetch(get(outside), brief)), "failed: The request timed out");
}
