#include "fakes/FakeClock.h"
#include "fakes/FakeSecretStore.h"
#include "linux/http/CurlHttpTransport.h"
#include "platform/Background.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"
#include "support/Fixtures.h"
#include "support/Patience.h"
#include "support/ScriptedServer.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The client over real sockets. Only the waits between tries are not real.
class LumoServiceWireTest : public testing::Test {
protected:
    LumoServiceWireTest() { store.put({u"com.lumora.app"_s, u"briefingToken"_s}, "T"); }

    tl::expected<Briefing, LumoError> fetch(const QUrl& url) {
        const auto task = service.fetchBriefing(url.toString());
        const auto isReady = [&] {
            if (clock.pendingWaitCount() > 0)
                clock.advance(1s);
            return task.isReady();
        };
        if (!QTest::qWaitFor(isReady, patience))
            throw std::runtime_error("the fetch did not complete");
        return task.operator co_await().await_resume();
    }

    /// What the user reads after a failed fetch from `server`.
    QString failure(const ScriptedServer& server) {
        const auto outcome = fetch(server.url(u"/api/briefing"_s));
        return outcome ? u"no failure"_s : outcome.error().errorDescription();
    }

    Background background;
    FakeClock clock;
    CurlHttpTransport transport{{2s, 5s, 1'000'000}};
    FakeSecretStore store;
    KeychainService keychain{store};
    LumoService service{transport, keychain, clock, background};
};

} // namespace

TEST_F(LumoServiceWireTest, FetchesABriefing) {
    ScriptedServer server(ScriptedServer::always(
        ScriptedServer::answer("200 OK", fixture(u"briefing-minimal.json"_s))));
    const auto briefing = fetch(server.url(u"/api/briefing"_s));
    ASSERT_TRUE(briefing) << qPrintable(briefing.error().errorDescription());
    EXPECT_EQ(briefing->date, u"2025-03-04"_s);
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_TRUE(server.requests()[0].startsWith("GET /api/briefing HTTP/1.1\r\n"));
    EXPECT_EQ(header(server.requests()[0], "X-Api-Key"), "T");
    EXPECT_EQ(header(server.requests()[0], "Accept"), "application/json");
    EXPECT_FALSE(server.requests()[0].toLower().contains("content-type"));
}

TEST_F(LumoServiceWireTest, AServerThatClosesUnansweredSeesThreeRequests) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) { connection.close(); });
    EXPECT_EQ(failure(server), u"Connection closed"_s);
    EXPECT_EQ(server.requests().size(), 3);
}

TEST_F(LumoServiceWireTest, AServerThatFailsSeesThreeRequests) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("503 Service Unavailable", "down")));
    EXPECT_EQ(failure(server), u"Server error (503)"_s);
    EXPECT_EQ(server.requests().size(), 3);
    EXPECT_EQ(clock.waits(), (std::vector<std::chrono::milliseconds>{500ms, 1000ms}));
}

TEST_F(LumoServiceWireTest, ARejectedTokenIsSentOnce) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer(
        "401 Unauthorized", "no", "WWW-Authenticate: Basic realm=\"r\"\r\n")));
    EXPECT_EQ(failure(server), u"Token rejected (401)"_s);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(LumoServiceWireTest, TheServersOwnMessageArrives) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("404 Not Found", R"({"error": "Gone"})")));
    EXPECT_EQ(failure(server), u"Gone"_s);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(LumoServiceWireTest, ARedirectToElsewhereIsTheAnswer) {
    ScriptedServer server(ScriptedServer::always(
        ScriptedServer::answer("302 Found", "", "Location: https://example.invalid/\r\n")));
    EXPECT_EQ(failure(server), u"Server error (302)"_s);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(LumoServiceWireTest, AnOversizedBodyIsInvalidAndNotAskedForAgain) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("200 OK", QByteArray(1'000'001, ' '))));
    EXPECT_EQ(failure(server), u"Invalid response from server"_s);
    EXPECT_EQ(server.requests().size(), 1);
}
