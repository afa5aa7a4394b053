#include "platform/Background.h"

#include "platform/Spawn.h"
#include "support/Patience.h"

#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <optional>
#include <vector>

using namespace lumora;
using namespace lumora::tests;

namespace {

/// Sets `end` when `work` is done.
template <typename Result>
void keep(Background& background, std::function<Result()> work, std::optional<Result>& end) {
    static const QObject owner;
    spawn<Result>(&owner, background.run(std::move(work)), [&end](Result result) { end = result; });
}

} // namespace

TEST(Background, WorksOnAThreadOfItsOwn) {
    std::optional<QThread*> worker;
    Background background;
    keep<QThread*>(background, [] { return QThread::currentThread(); }, worker);
    ASSERT_TRUE(QTest::qWaitFor([&] { return worker.has_value(); }, patience));
    EXPECT_NE(*worker, QThread::currentThread());
}

TEST(Background, TellsInTheEventLoop) {
    std::atomic<bool> isDone = false;
    std::optional<int> result;
    Background background;
    keep<int>(
        background,
        [&isDone] {
            isDone = true;
            return 1;
        },
        result);
    while (!isDone)
        QThread::yieldCurrentThread();
    EXPECT_FALSE(result);
    EXPECT_TRUE(QTest::qWaitFor([&] { return result == 1; }, patience));
}

TEST(Background, DoesOneThingAfterAnother) {
    std::atomic<int> atOnce = 0;
    std::atomic<int> most = 0;
    const auto work = [&] {
        most = std::max<int>(most, ++atOnce);
        for (int turn = 0; turn < 10; ++turn)
            QThread::yieldCurrentThread();
        return --atOnce;
    };
    std::vector<std::optional<int>> ends(20);
    Background background;
    for (auto& end : ends)
        keep<int>(background, work, end);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ends.back().has_value(); }, patience));
    EXPECT_EQ(most, 1);
}

TEST(Background, ItsEndIsTheEndOfAllWork) {
    std::vector<std::optional<int>> ends(3);
    {
        Background background;
        for (auto& end : ends)
            keep<int>(background, [] { return 7; }, end);
    }
    for (const auto& end : ends)
        EXPECT_EQ(end, 7);
}

TEST(Background, WhatFollowsFromItsLastWorkIsDoneToo) {
    std::optional<int> second;
    {
        Background background;
        static const QObject owner;
        spawn<int>(&owner, background.run<int>([] { return 1; }), [&](int first) {
            keep<int>(background, [first] { return first + 1; }, second);
        });
    }
    EXPECT_EQ(second, 2);
}
