#include "e2e/Complaints.h"
#include "e2e/ConfiguredProgram.h"
#include "support/ScriptedServer.h"

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class RefreshCommand : public ConfiguredProgram {};

/// A user whose service refuses, and does not say why.
class RefreshCommandWithARefusal : public testing::Test {
protected:
    explicit RefreshCommandWithARefusal(const QByteArray& body = R"({"error":""})")
        : server(ScriptedServer::always(ScriptedServer::answer("400 Bad Request", body))) {}

    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, "a token"));
        lumora.writePreferences({{u"endpointURL"_s, server.url(u"/api/briefing"_s).toString()}});
    }

    void startAnswering() {
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));
    }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    ScriptedServer server;
};

/// A user whose service wants to steer the terminal.
class RefreshCommandWithAHostileRefusal : public RefreshCommandWithARefusal {
protected:
    RefreshCommandWithAHostileRefusal()
        : RefreshCommandWithARefusal(
              R"({"error":"No\u001b]0;title\u0007\n\u009b2J such \u202ehabit"})") {}
};

} // namespace

TEST_F(RefreshCommandWithARefusal, ARefreshFailsAndSaysSoAllTheSame) {
    startAnswering();
    const auto refreshed = lumora.run({u"refresh"_s});
    expectComplaint(refreshed, 1);
    EXPECT_EQ(refreshed.err, "lumora: The refresh failed, and no reason was given\n");
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}, {u"message"_s, u""_s}}));
}

TEST_F(RefreshCommandWithAHostileRefusal, NothingOfItSteersTheTerminal) {
    startAnswering();
    const auto refreshed = lumora.run({u"refresh"_s});
    expectComplaint(refreshed, 1);
    EXPECT_EQ(refreshed.err, "lumora: No ]0;title 2J such habit\n");
    const auto status = lumora.run({u"status"_s, u"--format"_s, u"json"_s});
    EXPECT_TRUE(status.out.contains(R"(\u001b]0;title\u0007\n\u009b2J such \u202ehabit)"));
}

TEST_F(RefreshCommand, RefreshReturnsWhenTheFetchHasEnded) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    leaveMeetingsBehind();
    const auto refreshed = lumora.run({u"refresh"_s});
    EXPECT_EQ(refreshed.exitCode, 0);
    EXPECT_EQ(refreshed.out, "");
    EXPECT_EQ(refreshed.err, "");
    EXPECT_EQ(lumora.status().value(u"text"_s), u"1/5"_s);

    service.control({{u"scenario"_s, u"html"_s}});
    const auto failed = lumora.run({u"refresh"_s});
    expectComplaint(failed, 1);
    EXPECT_EQ(failed.err, "lumora: Invalid response from server\n");
}
