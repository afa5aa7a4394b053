// A row of each kind, on the built program.

#include "faults/program/FaultyProgram.h"
#include "texts/StatusPresentation.h"

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const char* const rows[] = {
    "nobody listens",
    "a name that nobody has",
    "closes in the body",
    "resets in the head",
    "fewer bytes than were announced",
    "an unasked transfer coding",
    "a greeting of another protocol",
    "a header without end",
    "503",
    "304",
    "401",
    "404 with a text",
    "an empty text",
    "302 to another host",
    "HTML",
    "16 MiB and a byte",
    "an expired certificate",
    "HTTP at a TLS port",
    "a proxy that wants a password",
    "a SOCKS proxy that refuses",
};

class ProgramFaults : public FaultyProgram, public testing::WithParamInterface<const char*> {
protected:
    /// As many requests as the row says have come for each of so many fetches.
    void expectRequests(int fetches) {
        const int connections = fetches * row.connections();
        const int requests = fetches * row.requests;
        EXPECT_TRUE(service.comesToCount(connections, requests));
        EXPECT_EQ(service.count().connections, connections);
        EXPECT_EQ(service.count().requests, requests);
    }

    const FaultRow& row = faultRow(GetParam());
    const QJsonObject shownWhenWell{
        {u"state"_s, u"loaded"_s}, {u"message"_s, QJsonValue(QJsonValue::Null)}};
};

std::string nameOf(const testing::TestParamInfo<const char*>& info) {
    return rowTestName(info.param);
}

} // namespace

TEST_P(ProgramFaults, AreToldAndGotOver) {
    standBy(row);
    goTo(service.goodEndpoint());
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow(shownWhenWell));
    const QJsonValue lastUpdated = lumora.status().value(u"lastUpdated"_s);

    goTo(way.endpoint);
    EXPECT_TRUE(lumora.comesToShow(
        {{u"state"_s, row.end.state},
         {u"message"_s, *row.end.message},
         {u"lastUpdated"_s, lastUpdated}}));
    expectRequests(1);
    const auto refreshed = lumora.run({u"refresh"_s});
    EXPECT_EQ(refreshed.exitCode, 1);
    EXPECT_EQ(refreshed.err, "lumora: " + failureText(*row.end.message).toUtf8() + '\n');
    expectRequests(2);

    goTo(service.goodEndpoint());
    EXPECT_TRUE(lumora.comesToShow(shownWhenWell));
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    const auto ended = lumora.waitForEnd();
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.err, "");
}

INSTANTIATE_TEST_SUITE_P(, ProgramFaults, testing::ValuesIn(rows), nameOf);
