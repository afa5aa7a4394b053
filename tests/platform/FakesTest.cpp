#include "fakes/FakeClock.h"
#include "fakes/FakeHttpTransport.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

QCoro::Task<> noteAfter(FakeClock* clock, std::chrono::milliseconds duration, QStringList* log) {
    co_await clock->wait(duration);
    *log += u"wait %1"_s.arg(duration.count());
}

QCoro::Task<> noteStatus(FakeHttpTransport* transport, QString name, QStringList* log) {
    HttpRequest request{"GET", QUrl(u"http://localhost/"_s), {}, {}};
    const HttpOutcome outcome = co_await transport->exchange(std::move(request));
    *log += outcome ? u"%1: %2"_s.arg(name).arg(outcome->status)
                    : u"%1: %2"_s.arg(name, outcome.error().description);
}

} // namespace

TEST(FakeClock, FiresTicksAndWaitsInOrder) {
    FakeClock clock;
    QStringList log;
    const auto timer = clock.every(2s, [&log] { log += u"tick"_s; });
    const auto wait = noteAfter(&clock, 3000ms, &log);
    clock.advance(1999ms);
    EXPECT_TRUE(log.isEmpty());
    clock.advance(2001ms);
    EXPECT_EQ(log, QStringList({u"tick"_s, u"wait 3000"_s, u"tick"_s}));
    EXPECT_EQ(clock.now() - FakeClock::defaultStart, 4s);
    EXPECT_EQ(clock.waits(), std::vector{3000ms});
}

TEST(FakeClock, SuspendFiresADueTickOnceAtTheMomentOfResuming) {
    FakeClock clock;
    std::vector<Instant> ticks;
    const auto timer = clock.every(2s, [&] { ticks.push_back(clock.now()); });
    clock.suspend(9s);
    EXPECT_EQ(ticks, std::vector{FakeClock::defaultStart + 9s});
    clock.advance(2s);
    EXPECT_EQ(ticks.size(), 2U);
}

TEST(FakeClock, ADestroyedTimerTicksNoMoreEvenFromItsOwnTick) {
    FakeClock clock;
    int ticks = 0;
    std::unique_ptr<RepeatingTimer> timer;
    timer = clock.every(1s, [&] {
        ++ticks;
        timer.reset();
    });
    clock.advance(5s);
    EXPECT_EQ(ticks, 1);
    EXPECT_TRUE(clock.timerIntervals().empty());
}

TEST(FakeClock, AnAlarmRingsOnceWhenItsTimeIsShown) {
    FakeClock clock;
    std::vector<Instant> rung;
    const auto alarm = clock.at(clock.now() + 1h, [&] { rung.push_back(clock.now()); });
    {
        const auto cancelled = clock.at(clock.now() + 1h, [] { FAIL(); });
    }
    clock.set(FakeClock::defaultStart - 1h);
    clock.advance(90min);
    EXPECT_TRUE(rung.empty());
    clock.set(FakeClock::defaultStart + 2h);
    clock.advance(1h);
    EXPECT_EQ(rung, std::vector{FakeClock::defaultStart + 2h});
    EXPECT_TRUE(clock.timerIntervals().empty());
}

TEST(FakeClock, EndsItsWaitsWithItself) {
    QStringList log;
    {
        FakeClock clock;
        const auto wait = noteAfter(&clock, 10ms, &log);
        EXPECT_EQ(clock.pendingWaitCount(), 1U);
    }
    EXPECT_EQ(log, QStringList{u"wait 10"_s});
}

TEST(FakeHttpTransport, CompletesInTheOrderThatTheTestChooses) {
    QStringList log;
    {
        FakeHttpTransport transport;
        const auto first = noteStatus(&transport, u"first"_s, &log);
        const auto second = noteStatus(&transport, u"second"_s, &log);
        transport.prepare(FakeHttpTransport::answer(203));
        const auto third = noteStatus(&transport, u"third"_s, &log);
        transport.complete(1, FakeHttpTransport::answer(202));
        EXPECT_EQ(transport.pendingCount(), 1U);
    }
    EXPECT_EQ(
        log,
        QStringList({u"third: 203"_s, u"second: 202"_s, u"first: The transport was closed"_s}));
}
