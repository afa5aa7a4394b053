#include "platform/Background.h"

#include "platform/Spawn.h"

#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

using namespace lumora;

namespace {

/// Sets `end` when `work` is done.
template <typename Result>
void keep(Background& background, std::function<Result()> work, std::optional<Result>& end) {
    static const QObject owner;
    spawn<Result>(&owner, background.run(std::move(work)), [&end](Result result) { end = result; });
}

} // namespace

TEST(Background, WorksOnAThreadOfItsOwn) {
    Background background;
    std::optional<QThread*> worker;
    keep<QThread*>(background, [] { return QThread::currentThread(); }, worker);
    ASSERT_TRUE(QTest::qWaitFor([&] { return worker.has_value(); }));
    EXPECT_NE(*worker, QThread::currentThread());
}

TEST(Background, TellsInTheEventLoop) {
    Background background;
    std::atomic<bool> isDone = false;
    std::optional<int> result;
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return result == 1; }));
}

TEST(Background, DoesOneThingAfterAnother) {
    Background background;
    std::atomic<int> atOnce = 0;
    std::atomic<int> most = 0;
    const auto work = [&] {
        most = std::max<int>(most, ++atOnce);
        for (int turn = 0; turn < 1000; ++turn)
            QThread::yieldCurrentThread();
        return --atOnce;
    };
    std::vector<std::optional<int>> ends(20);
    for (auto& end : ends)
        keep<int>(background, work, end);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ends.back().has_value(); }));
    EXPECT_EQ(most, 1);
}

TEST(Background, ItsEndIsTheEndOfAllWork) {
    auto background = std::make_unique<Background>();
    std::vector<std::optional<int>> ends(3);
    for (auto& end : ends)
        keep<int>(*background, [] { return 7; }, end);
    background.reset();
    for (const auto& end : ends)
        EXPECT_EQ(end, 7);
}

TEST(Background, WhatFollowsFromItsLastWorkIsDoneToo) {
    auto background = std::make_unique<Background>();
    std::optional<int> second;
    static const QObject owner;
    spawn<int>(&owner, background->run<int>([] { return 1; }), [&](int first) {
        keep<int>(*background, [first] { return first + 1; }, second);
    });
    background.reset();
    EXPECT_EQ(second, 2);
}
