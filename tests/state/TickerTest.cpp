#include "state/Ticker.h"

#include "fakes/FakeClock.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;

TEST(Ticker, StartsAtTheTimeOfItsCreation) {
    FakeClock clock;
    const Ticker ticker(clock);
    EXPECT_EQ(ticker.now(), FakeClock::defaultStart);
}

TEST(Ticker, MovesEveryThirtySeconds) {
    FakeClock clock;
    const Ticker ticker(clock);
    const QSignalSpy ticked(&ticker, &Ticker::ticked);
    clock.advance(29s);
    EXPECT_EQ(ticker.now(), FakeClock::defaultStart);
    clock.advance(1s);
    EXPECT_EQ(ticker.now(), FakeClock::defaultStart + 30s);
    clock.advance(60s);
    EXPECT_EQ(ticked.count(), 3);
}

TEST(Ticker, HasMovedWhenItSaysSo) {
    FakeClock clock;
    const Ticker ticker(clock);
    std::vector<Instant> seen;
    QObject::connect(&ticker, &Ticker::ticked, [&] { seen.push_back(ticker.now()); });
    clock.advance(60s);
    EXPECT_EQ(seen, (std::vector{FakeClock::defaultStart + 30s, FakeClock::defaultStart + 60s}));
}

TEST(Ticker, CatchesUpOnceAfterSuspend) {
    FakeClock clock;
    const Ticker ticker(clock);
    const QSignalSpy ticked(&ticker, &Ticker::ticked);
    clock.suspend(8h);
    EXPECT_EQ(ticked.count(), 1);
    EXPECT_EQ(ticker.now(), FakeClock::defaultStart + 8h);
}

TEST(Ticker, StopsWhenItIsGone) {
    FakeClock clock;
    {
        const Ticker ticker(clock);
    }
    EXPECT_TRUE(clock.timerIntervals().empty());
}
