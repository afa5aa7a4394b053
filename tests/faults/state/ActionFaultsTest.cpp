// Actions on services that have faults: what is repeated, what is said, and that every action ends.

#include "faults/ClientLimits.h"
#include "faults/state/FetchingClient.h"
#include "service/LumoAction.h"
#include "support/Await.h"
#include "support/Fixtures.h"
#include "support/ScriptedServer.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <set>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A service that gives good briefings, and does with actions what the test says.
class ActionFaults : public testing::Test {
protected:
    void SetUp() override { use(usual); }

    /// Tries the faults on this client.
    void use(FetchingClient& chosen) {
        client = &chosen;
        client->setEndpoint(server.url(u"/api/briefing"_s).toString());
        client->fetch();
        ASSERT_EQ(client->end(), loaded());
        briefing = client->briefing();
        client->takeWaits();
    }

    QCoro::Task<bool> toggle(int habit) {
        const QString id = QString::number(habit);
        return client->state().perform(LumoAction::habitToggle(id), u"habit:"_s + id);
    }

    /// Toggles fifty habits at once; how many of these the service took.
    int toggleMany() {
        std::vector<QCoro::Task<bool>> tasks;
        for (int habit = 0; habit < many; ++habit)
            tasks.push_back(toggle(habit));
        EXPECT_EQ(client->state().pending().size(), many);
        int taken = 0;
        for (auto& task : tasks)
            taken += awaitValue(std::move(task)) ? 1 : 0;
        return taken;
    }

    /// The bodies of the actions that came.
    QByteArrayList actions() const {
        QByteArrayList bodies;
        for (const QByteArray& request : server.requests()) {
            if (request.startsWith("POST /api/briefing/action "))
                bodies += request.mid(request.indexOf("\r\n\r\n") + 4);
        }
        return bodies;
    }

    void expectAtRest(const std::optional<QString>& actionError) {
        EXPECT_TRUE(client->state().pending().empty());
        EXPECT_EQ(client->state().actionError(), actionError);
    }

    void expectGoodFetch() {
        client->fetch();
        EXPECT_EQ(client->end(), loaded());
        EXPECT_NE(client->briefing(), briefing);
    }

    static constexpr int many = 50;

    ScriptedServer::Script action = ScriptedServer::always(ScriptedServer::answer("200 OK", "{}"));
    int briefings = 0;
    ScriptedServer server{[this](QTcpSocket& connection, const QByteArray& request) {
        if (request.startsWith("POST"))
            return action(connection, request);
        connection.write(ScriptedServer::answer("200 OK", briefingBody(++briefings)));
        connection.disconnectFromHost();
    }};
    FetchingClient usual{ClientLimits::usual};
    FetchingClient hurried{ClientLimits::hurried};
    FetchingClient* client = nullptr;
    std::optional<double> briefing; ///< before the actions
};

} // namespace

TEST_F(ActionFaults, FiftyAtOnceAllArriveOnce) {
    const int before = briefings;
    EXPECT_EQ(toggleMany(), many);
    EXPECT_EQ(actions().size(), many);
    const auto bodies = actions();
    EXPECT_EQ(std::set<QByteArray>(bodies.begin(), bodies.end()).size(), many);
    expectAtRest(std::nullopt);
    EXPECT_EQ(client->end(), loaded());
    EXPECT_EQ(briefings, before + many); // one for each action, to see what came of it
    EXPECT_EQ(client->briefing(), briefings);
}

TEST_F(ActionFaults, FiftyAtOnceAreAllRepeatedAndAllFail) {
    action = ScriptedServer::always(ScriptedServer::answer("503 Busy", ""));
    EXPECT_EQ(toggleMany(), 0);
    EXPECT_EQ(actions().size(), 3 * many);
    expectAtRest(u"Server error (503)"_s);
    EXPECT_EQ(client->briefing(), briefing);
    expectGoodFetch();
}

TEST_F(ActionFaults, FiftyThatHangHoldUpNoFetch) {
    use(hurried);
    action = [](QTcpSocket&, const QByteArray&) {};
    std::vector<QCoro::Task<bool>> tasks;
    for (int habit = 0; habit < many; ++habit)
        tasks.push_back(toggle(habit));
    expectGoodFetch();
    for (auto& task : tasks)
        EXPECT_FALSE(awaitValue(std::move(task)));
    expectAtRest(u"The request timed out"_s);
    EXPECT_EQ(client->end(), loaded());
    expectGoodFetch();
}

TEST_F(ActionFaults, OneWhoseReplyIsLostIsSentAgainAsItWas) {
    for (const QByteArray reply :
         {"", "HTTP/1.1 200 OK\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{"}) {
        const qsizetype before = actions().size();
        action = [this, reply](QTcpSocket& connection, const QByteArray&) {
            action = ScriptedServer::always(ScriptedServer::answer("200 OK", "{}"));
            connection.write(reply);
            connection.disconnectFromHost();
        };
        EXPECT_TRUE(awaitValue(client->state().capture(u"buy \"milk\" 🥛"_s)));
        const QByteArrayList sent = actions().mid(before);
        ASSERT_EQ(sent.size(), 2) << reply.constData();
        EXPECT_EQ(sent[0], sent[1]);
        EXPECT_EQ(
            QJsonDocument::fromJson(sent[0]).object(),
            (QJsonObject{{u"type"_s, u"capture"_s}, {u"text"_s, u"buy \"milk\" 🥛"_s}}));
        EXPECT_EQ(client->takeWaits().size(), 1);
        expectAtRest(std::nullopt);
        EXPECT_EQ(client->end(), loaded());
        EXPECT_EQ(client->briefing(), briefings);
    }
}

TEST_F(ActionFaults, OneWhoseReplyIsLostThriceIsGivenUp) {
    action = ScriptedServer::always("");
    EXPECT_FALSE(awaitValue(toggle(7)));
    ASSERT_EQ(actions().size(), 3);
    EXPECT_EQ(actions()[0], actions()[2]);
    expectAtRest(u"Connection closed"_s);
    EXPECT_EQ(client->end(), loaded());
    EXPECT_EQ(client->briefing(), briefing); // nothing was fetched for it
    expectGoodFetch();
}

TEST_F(ActionFaults, OneThatIsRefusedIsNotRepeated) {
    const std::pair<QByteArray, QString> rows[] = {
        {ScriptedServer::answer("409 Conflict", R"({"error":"Done already"})"), u"Done already"_s},
        {ScriptedServer::answer("404 Not Found", "<html>"), u"Server error (404)"_s},
        {ScriptedServer::answer("401 Unauthorized", ""), u"Token rejected (401)"_s},
        {ScriptedServer::answer("304 Not Modified", ""), u"Server error (304)"_s},
        {"SSH-2.0-OpenSSH_9.2p1\r\n", u"Invalid response from server"_s},
    };
    for (const auto& [reply, message] : rows) {
        const qsizetype before = actions().size();
        action = ScriptedServer::always(reply);
        EXPECT_FALSE(awaitValue(toggle(7)));
        EXPECT_EQ(actions().size(), before + 1) << reply.constData();
        expectAtRest(message);
        EXPECT_EQ(client->briefing(), briefing);
    }
}

TEST_F(ActionFaults, OneThatIsTakenCountsWhateverTheReplySays) {
    for (const QByteArray reply : {"", "OK", "<html>", "[]", R"({"ok":false})", R"({"ok":"no"})"}) {
        action = ScriptedServer::always(ScriptedServer::answer("200 OK", reply));
        EXPECT_TRUE(awaitValue(toggle(7))) << reply.constData();
        expectAtRest(std::nullopt);
    }
}

TEST_F(ActionFaults, OneThatIsLedElsewhereKeepsItsBodyOrItsOrigin) {
    ScriptedServer other(ScriptedServer::always(ScriptedServer::answer("200 OK", "{}")));
    const QByteArray elsewhere = other.url(u"/action"_s).toEncoded();
    action = ScriptedServer::always(
        ScriptedServer::answer("307 Elsewhere", "", "Location: " + elsewhere + "\r\n"));
    EXPECT_FALSE(awaitValue(toggle(7)));
    expectAtRest(u"Server error (307)"_s);
    EXPECT_EQ(other.connectionCount(), 0);

    action = [](QTcpSocket& connection, const QByteArray& request) {
        connection.write(
            request.startsWith("POST /there ")
                ? ScriptedServer::answer("200 OK", "{}")
                : ScriptedServer::answer("307 There", "", "Location: /there\r\n"));
        connection.disconnectFromHost();
    };
    EXPECT_TRUE(awaitValue(toggle(8)));
    const QByteArray body = R"({"id":"8","type":"habit.toggle"})";
    EXPECT_EQ(actions().last(), body);
    const auto requests = server.requests();
    EXPECT_EQ(
        std::ranges::count_if(
            requests,
            [&](const QByteArray& request) {
                return request.startsWith("POST /there ") && request.endsWith(body);
            }),
        1);
}
