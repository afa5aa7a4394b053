#include "linux/time/SystemClock.h"

#include "support/Patience.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono;
using namespace std::chrono_literals;

namespace {

QCoro::Task<> count(Clock* clock, milliseconds duration, int* completed) {
    co_await clock->wait(duration);
    ++*completed;
}

QCoro::Task<> countTwice(Clock* clock, milliseconds duration, int* completed) {
    co_await clock->wait(duration);
    ++*completed;
    co_await clock->wait(duration);
    ++*completed;
}

int openDescriptors() {
    return static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::NoFilter).size());
}

/// What `make` returns when the process has no descriptor left for it.
template <typename Make>
auto withoutDescriptors(Make make) {
    rlimit usual{};
    EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit none{0, usual.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    auto made = make();
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
    return made;
}

/// Whether the sanitizers watch, which cannot look at memory without descriptors of their own.
constexpr bool isWatched =
#ifdef __SANITIZE_ADDRESS__
    true;
#else
    false;
#endif

} // namespace

TEST(SystemClock, KnowsTheTime) {
    const SystemClock clock;
    const auto before = floor<microseconds>(system_clock::now());
    const Instant now = clock.now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, system_clock::now());
}

TEST(SystemClock, TicksOncePerInterval) {
    SystemClock clock;
    const Instant start = clock.now();
    std::vector<Instant> ticks;
    const auto timer = clock.every(1s, [&] { ticks.push_back(clock.now()); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks.size() == 2; }, patience));
    EXPECT_GE(ticks[0] - start, 1s);
    EXPECT_GE(ticks[1] - start, 2s);
}

TEST(SystemClock, AnIntervalOfZeroCountsAsASecond) {
    SystemClock clock;
    const Instant start = clock.now();
    int ticks = 0;
    const auto timer = clock.every(0s, [&] { ++ticks; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks > 0; }, patience));
    EXPECT_GE(clock.now() - start, 1s);
}

TEST(SystemClock, TakesTheLongestInterval) {
    SystemClock clock;
    int ticks = 0;
    const auto timer = clock.every(seconds::max(), [&] { ++ticks; });
    int other = 0;
    const auto witness = clock.every(1s, [&] { ++other; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return other > 0; }, patience));
    EXPECT_EQ(ticks, 0);
}

TEST(SystemClock, ADestroyedTimerTicksNoMoreAndLeavesNothingOpen) {
    SystemClock clock;
    const int before = openDescriptors();
    int ticks = 0;
    int other = 0;
    auto timer = clock.every(1s, [&] { ++ticks; });
    timer.reset();
    EXPECT_EQ(openDescriptors(), before);
    const auto witness = clock.every(1s, [&] { ++other; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return other > 0; }, patience));
    EXPECT_EQ(ticks, 0);
}

TEST(SystemClock, ATickMayDestroyItsTimer) {
    SystemClock clock;
    int ticks = 0;
    std::unique_ptr<RepeatingTimer> timer;
    // What the tick has captured must live on to its last line.
    timer = clock.every(1s, [&timer, &ticks, name = std::string(100, 'x')] {
        timer.reset();
        ticks += static_cast<int>(name.size()) / 100;
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !timer; }, patience));
    EXPECT_EQ(ticks, 1);
}

TEST(SystemClock, AnAlarmRingsOnceAtItsTime) {
    SystemClock clock;
    const Instant time = clock.now() + 150ms;
    std::vector<Instant> rung;
    const auto alarm = clock.at(time, [&] { rung.push_back(clock.now()); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !rung.empty(); }, patience));
    EXPECT_GE(rung[0], time);
    int other = 0;
    const auto witness = clock.at(clock.now() + 10ms, [&] { ++other; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return other > 0; }, patience));
    EXPECT_EQ(rung.size(), 1U);
}

TEST(SystemClock, AnAlarmForThePastRingsFromTheEventLoop) {
    SystemClock clock;
    for (const Instant time : {clock.now() - 1h, Instant(), Instant(-1h)}) {
        int rings = 0;
        const auto alarm = clock.at(time, [&] { ++rings; });
        EXPECT_EQ(rings, 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return rings == 1; }, patience));
    }
}

TEST(SystemClock, ADestroyedAlarmRingsNoMoreAndLeavesNothingOpen) {
    SystemClock clock;
    const int before = openDescriptors();
    int rings = 0;
    int other = 0;
    auto alarm = clock.at(clock.now() + 10ms, [&] { ++rings; });
    alarm.reset();
    EXPECT_EQ(openDescriptors(), before);
    const auto witness = clock.at(clock.now() + 20ms, [&] { ++other; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return other > 0; }, patience));
    EXPECT_EQ(rings, 0);
}

TEST(SystemClock, ARingingAlarmMayBeReplaced) {
    SystemClock clock;
    int rings = 0;
    std::unique_ptr<Alarm> alarm;
    // What it has captured must live on to its last line.
    alarm = clock.at(clock.now(), [&, name = std::string(100, 'x')] {
        alarm = clock.at(clock.now(), [&] { ++rings; });
        rings += static_cast<int>(name.size()) / 100;
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return rings == 2; }, patience));
}

TEST(SystemClock, TicksWithoutADescriptorAsWell) {
    if (isWatched)
        GTEST_SKIP() << "the sanitizers need descriptors";
    SystemClock clock;
    const int before = openDescriptors();
    const Instant start = clock.now();
    std::vector<Instant> ticks;
    const auto timer =
        withoutDescriptors([&] { return clock.every(1s, [&] { ticks.push_back(clock.now()); }); });
    EXPECT_EQ(openDescriptors(), before);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks.size() == 2; }, patience));
    EXPECT_GE(ticks[0] - start, 1s);
    EXPECT_GE(ticks[1] - start, 2s);
}

TEST(SystemClock, RingsWithoutADescriptorAsWell) {
    if (isWatched)
        GTEST_SKIP() << "the sanitizers need descriptors";
    SystemClock clock;
    const Instant time = clock.now() + 1200ms; // longer than it takes to look at the clock
    std::vector<Instant> rung;
    int past = 0;
    auto cancelled = withoutDescriptors([&] { return clock.at(time, [&] { ADD_FAILURE(); }); });
    const auto alarm =
        withoutDescriptors([&] { return clock.at(time, [&] { rung.push_back(clock.now()); }); });
    const auto late = withoutDescriptors([&] { return clock.at(Instant(), [&] { ++past; }); });
    EXPECT_EQ(past, 0);
    cancelled.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !rung.empty(); }, patience));
    EXPECT_GE(rung[0], time);
    EXPECT_FALSE(QTest::qWaitFor([&] { return rung.size() > 1; }, 50));
    EXPECT_EQ(past, 1);
}

TEST(SystemClock, ATickWithoutADescriptorMayDestroyItsTimer) {
    if (isWatched)
        GTEST_SKIP() << "the sanitizers need descriptors";
    SystemClock clock;
    std::unique_ptr<RepeatingTimer> timer =
        withoutDescriptors([&] { return clock.every(1s, [&] { timer.reset(); }); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !timer; }, patience));
}

TEST(SystemClock, WaitsNoShorterThanAsked) {
    SystemClock clock;
    QElapsedTimer timer;
    timer.start();
    int completed = 0;
    count(&clock, 100ms, &completed);
    EXPECT_EQ(completed, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return completed == 1; }, patience));
    EXPECT_GE(timer.elapsed(), 100);
}

TEST(SystemClock, WaitsOverlap) {
    SystemClock clock;
    int slow = 0;
    int fast = 0;
    count(&clock, 24h, &slow);
    count(&clock, 1ms, &fast);
    ASSERT_TRUE(QTest::qWaitFor([&] { return fast == 1; }, patience));
    EXPECT_EQ(slow, 0);
}

TEST(SystemClock, AWaitForNothingCompletesAtOnce) {
    SystemClock clock;
    int completed = 0;
    countTwice(&clock, 0ms, &completed);
    countTwice(&clock, -1s, &completed);
    EXPECT_EQ(completed, 4);
}

TEST(SystemClock, PendingWaitsCompleteWhenTheClockIsDestroyed) {
    int completed = 0;
    auto clock = std::make_unique<SystemClock>();
    count(clock.get(), 24h, &completed);
    countTwice(clock.get(), milliseconds::max(), &completed);
    clock.reset();
    EXPECT_EQ(completed, 3);
}
