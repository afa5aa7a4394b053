// Every row of the table on the same two clients: what a client makes of it and what that costs,
// that the last good briefing stays meanwhile, and that nothing of it is left for the next fetch.

#include "faults/ClientLimits.h"
#include "faults/FaultService.h"
#include "faults/FaultTable.h"
#include "faults/state/FetchingClient.h"
#include "linux/session/SpareMemory.h"
#include "support/Heartbeat.h"
#include "support/PrivateMemory.h"
#include "support/ScopedEnvironment.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Waits = std::vector<std::chrono::milliseconds>;

/// How long the event loop may be held up by anything: by work that it does itself, and altogether,
/// on however busy a machine. The sanitizers multiply work.
constexpr auto mostWork = memoryIsMeasurable ? 500ms : 1500ms;
constexpr auto longestGap = 5000ms;

/// What may be left of all rows together, in KiB.
constexpr qint64 toleratedMemory = 2 * 1024;

class ServiceFaults : public testing::TestWithParam<FaultRow> {
protected:
    /// What outlives the rows.
    struct Shared {
        FaultService service;
        FetchingClient usual{ClientLimits::usual};
        FetchingClient hurried{ClientLimits::hurried};
        qint64 memory = 0; ///< before the rows
        Heartbeat::Gaps largest;
        qint64 slowestGoodFetch = 0; ///< after a fault, in milliseconds
    };

    static void SetUpTestSuite() {
        shareMemoryAmongThreads();
        shared = std::make_unique<Shared>();
        // What is loaded for TLS and for refusing it stays from then on.
        for (FetchingClient* const client : {&shared->usual, &shared->hurried}) {
            for (const char* const row : {"TLS", "an expired certificate"})
                ServiceFaults::fetch(*client, shared->service.begin(faultRow(row)));
        }
        shared->memory = memory();
    }

    static void TearDownTestSuite() {
        const qint64 left = memory();
        std::cout << "Held up at most by " << shared->largest.work.count() << " ms of work, "
                  << shared->largest.time.count() << " ms in all. All was well within "
                  << shared->slowestGoodFetch << " ms. Private memory: " << shared->memory
                  << " KiB before the rows, " << left << " KiB after them\n";
        if (memoryIsMeasurable) {
            EXPECT_LT(left - shared->memory, toleratedMemory);
        }
        shared.reset();
    }

    void TearDown() override { client.forget(); }

    /// In KiB, without what is spare, as the program has it after a fetch.
    static qint64 memory() {
        returnSpareMemory();
        return privateMemory(QCoreApplication::applicationPid());
    }

    static FetchEnd fetch(FetchingClient& client, const FaultService::Way& way) {
        const ScopedEnvironment proxy("https_proxy", way.proxy);
        const ScopedEnvironment authority("SSL_CERT_FILE", way.authority);
        client.setEndpoint(way.endpoint);
        client.fetch();
        return client.end();
    }

    /// Fetches as the row wants it, and measures how long the event loop was held up.
    FetchEnd fetchMeasured() {
        Heartbeat heartbeat;
        heartbeat.start();
        const FetchEnd end = fetch(client, way);
        gaps = heartbeat.stop();
        shared->largest.add(gaps);
        return end;
    }

    /// Fetches from where all is well, at once or, by those in a hurry, nearly so.
    void expectGoodFetch(const FaultService::Way& from) {
        const auto before = client.briefing();
        client.takeTries();
        QElapsedTimer elapsed;
        elapsed.start();
        EXPECT_EQ(fetch(client, from), loaded());
        EXPECT_LT(elapsed.elapsed(), longestGap.count());
        shared->slowestGoodFetch = std::max(shared->slowestGoodFetch, elapsed.elapsed());
        EXPECT_NE(client.briefing(), before);
        if (!row.endsByALimit()) {
            EXPECT_EQ(client.takeTries(), 1);
        }
    }

    /// Whatever reached the service is what the row says, and no more comes later.
    void expectRequests(int recovered = 0) {
        const int requests = row.requests + recovered;
        const int connections = row.connections() + recovered;
        EXPECT_TRUE(shared->service.comesToCount(connections, requests));
        EXPECT_EQ(shared->service.count().requests, requests);
        EXPECT_EQ(shared->service.count().connections, connections);
    }

    /// The row as it went: tries, requests, how long the event loop was held up by work and in all,
    /// and the end.
    void print(const FetchEnd& end, int tries) const {
        const auto column = [](int width) { return std::setw(width); };
        std::cout << std::left << column(45) << row.name << std::right << column(2) << tries
                  << column(4) << shared->service.count().requests << column(5) << gaps.work.count()
                  << column(5) << gaps.time.count() << " ms  " << testing::PrintToString(end)
                  << '\n';
    }

    static std::unique_ptr<Shared> shared;

    const FaultRow& row = GetParam();
    FetchingClient& client = row.endsByALimit() ? shared->hurried : shared->usual;
    const FaultService::Way way = shared->service.begin(row);
    const FaultService::Way good{
        .endpoint = shared->service.goodEndpoint(), .proxy = {}, .authority = {}};
    Heartbeat::Gaps gaps;
};

std::unique_ptr<ServiceFaults::Shared> ServiceFaults::shared;

std::string nameOf(const testing::TestParamInfo<FaultRow>& info) {
    return rowTestName(info.param.name);
}

} // namespace

TEST_P(ServiceFaults, EndAsTheTableSaysAndLeaveNothing) {
    ASSERT_EQ(fetch(client, good), loaded());
    const auto briefing = client.briefing();
    const auto updated = client.status().lastUpdated;
    client.takeTries();
    client.takeWaits();

    const FetchEnd end = fetchMeasured();
    const int tries = client.takeTries();
    print(end, tries);
    EXPECT_EQ(end, row.end);
    EXPECT_EQ(tries, row.tries);
    EXPECT_EQ(client.takeWaits(), row.tries == 3 ? (Waits{500ms, 1000ms}) : Waits());
    EXPECT_LT(gaps.work, mostWork);
    EXPECT_LT(gaps.time, longestGap);
    if (row.end == loaded()) {
        EXPECT_NE(client.briefing(), briefing);
    } else {
        EXPECT_EQ(client.briefing(), briefing);
        EXPECT_EQ(client.status().lastUpdated, updated);
    }

    expectGoodFetch(good);
    expectRequests();
    if (row.canRecover() && !row.endsByALimit()) {
        shared->service.recover();
        expectGoodFetch(way);
        expectRequests(1);
    }
}

INSTANTIATE_TEST_SUITE_P(, ServiceFaults, testing::ValuesIn(faultTable()), nameOf);
