#include "platform/Spawn.h"

#include "platform/Completion.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

using Promise = std::shared_ptr<Completion<int>>;

/// Completes with what is promised, and counts how often it came that far.
QCoro::Task<int> waitFor(Promise promise, int* ends) {
    const int value = co_await promise->value();
    ++*ends;
    co_return value;
}

QCoro::Task<> waitForNothing(Promise promise) {
    co_await promise->value();
}

QCoro::Task<int> throwAfter(Promise promise) {
    co_await promise->value();
    throw std::runtime_error("what went wrong");
}

class SpawnTest : public testing::Test {
protected:
    void spawnWaiting() {
        spawn(owner.get(), waitFor(promise, &ends), [this](int value) { got = value; });
    }

    Promise promise = std::make_shared<Completion<int>>();
    std::unique_ptr<QObject> owner = std::make_unique<QObject>();
    std::optional<int> got;
    int ends = 0;
};

} // namespace

TEST_F(SpawnTest, DeliversTheResultWhenItIsThere) {
    spawnWaiting();
    EXPECT_EQ(got, std::nullopt);
    promise->complete(7);
    EXPECT_EQ(got, 7);
}

TEST_F(SpawnTest, DeliversAtOnceWhatIsThereAlready) {
    promise->complete(7);
    spawnWaiting();
    EXPECT_EQ(got, 7);
}

TEST_F(SpawnTest, GoesOnAfterATaskWithoutAResult) {
    spawn(owner.get(), waitForNothing(promise), [this] { ++ends; });
    EXPECT_EQ(ends, 0);
    promise->complete(7);
    EXPECT_EQ(ends, 1);
}

TEST_F(SpawnTest, HandsOverWhatCannotBeCopied) {
    const auto make = [](Promise ready) -> QCoro::Task<std::unique_ptr<int>> {
        auto value = std::make_unique<int>(co_await ready->value());
        co_return value;
    };
    spawn(owner.get(), make(promise), [this](std::unique_ptr<int> value) { got = *value; });
    promise->complete(7);
    EXPECT_EQ(got, 7);
}

TEST_F(SpawnTest, AnOwnerThatWasGoneBeforeHearsNothing) {
    owner.reset();
    promise->complete(7);
    spawnWaiting();
    EXPECT_EQ(got, std::nullopt);
    EXPECT_EQ(ends, 1);
}

TEST_F(SpawnTest, AnOwnerThatGoesMeanwhileHearsNothingButTheTaskEnds) {
    spawnWaiting();
    owner.reset();
    promise->complete(7);
    EXPECT_EQ(got, std::nullopt);
    EXPECT_EQ(ends, 1);
}

TEST_F(SpawnTest, AnOwnerThatGoesMeanwhileHearsNothingOfATaskWithoutAResult) {
    spawn(owner.get(), waitForNothing(promise), [this] { got = 0; });
    owner.reset();
    promise->complete(7);
    EXPECT_EQ(got, std::nullopt);
}

TEST_F(SpawnTest, AnOwnerMayGoAfterwardsOrInTheContinuation) {
    spawnWaiting();
    const auto late = std::make_shared<Completion<int>>();
    spawn(owner.get(), waitFor(late, &ends), [](int) {});
    promise->complete(7);
    owner.reset();
    EXPECT_EQ(got, 7);
    late->complete(7); // a task that never ends would never let go of its memory

    auto* const other = new QObject;
    promise = std::make_shared<Completion<int>>();
    spawn(other, waitForNothing(promise), [other] { delete other; });
    promise->complete(7);
}

TEST_F(SpawnTest, AContinuationIsKeptAndLetGoOnce) {
    const auto held = std::make_shared<int>();
    spawn(owner.get(), waitForNothing(promise), [held] {});
    EXPECT_EQ(held.use_count(), 2);
    promise->complete(7);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(SpawnTest, ATaskRunsToItsEndWithoutAnybody) {
    spawn(waitFor(promise, &ends));
    EXPECT_EQ(ends, 0);
    promise->complete(7);
    EXPECT_EQ(ends, 1);
}

TEST_F(SpawnTest, AnExceptionEndsTheProgramWhoeverIsLeftToHearOfIt) {
    EXPECT_DEATH(
        {
            spawn(throwAfter(promise));
            promise->complete(7);
        },
        "what went wrong");
    EXPECT_DEATH(
        {
            spawn(owner.get(), throwAfter(promise), [](int) {});
            owner.reset();
            promise->complete(7);
        },
        "what went wrong");
    promise->complete(7);
    EXPECT_DEATH(spawn(owner.get(), throwAfter(promise), [](int) {}), "what went wrong");
    EXPECT_DEATH(
        spawn(
            owner.get(), waitFor(promise, &ends),
            [](int) { throw std::runtime_error("what went wrong"); }),
        "what went wrong");
}
