#include "linux/http/OriginProxyFactory.h"

#include "linux/http/QtHttpTransport.h"
#include "support/Await.h"
#include "support/ScopedEnvironment.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class OriginProxyFactoryTest : public testing::Test {
protected:
    static HttpOutcome fetch(const QUrl& url) {
        QtHttpTransport transport;
        return awaitValue(transport.exchange({"GET", url, {}, {}}));
    }

    ScriptedServer proxy{ScriptedServer::always(ScriptedServer::answer("200 OK", "by proxy"))};
    ScopedEnvironment noProxy{"no_proxy", std::nullopt};
    ScopedEnvironment httpProxy{"http_proxy", proxy.url(QString()).toEncoded()};
};

} // namespace

TEST_F(OriginProxyFactoryTest, TheSystemsProxyCarriesWhatGoesOut) {
    const HttpOutcome outcome = fetch(QUrl(u"http://service.invalid/x"_s));
    ASSERT_TRUE(outcome) << qPrintable(outcome.error().description);
    EXPECT_EQ(outcome->body, "by proxy");
    EXPECT_TRUE(proxy.requests().value(0).startsWith("GET http://service.invalid/x HTTP/1.1"));
}

TEST_F(OriginProxyFactoryTest, WhatStaysOnThisComputerGoesThroughNoProxy) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "direct")));
    for (const QString& host : {u"127.0.0.1"_s, u"localhost"_s}) {
        QUrl url = server.url(u"/"_s);
        url.setHost(host);
        const HttpOutcome outcome = fetch(url);
        ASSERT_TRUE(outcome) << qPrintable(outcome.error().description);
        EXPECT_EQ(outcome->body, "direct");
    }
    EXPECT_EQ(proxy.connectionCount(), 0);
}
