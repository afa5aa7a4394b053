#pragma once

#include <QCoroTask>
#include <QTest>

#include <stdexcept>

namespace lumora::tests {

/// Runs the event loop until `task` has completed, and hands its value over. Throws after ten
/// seconds.
template <typename Value>
Value awaitValue(QCoro::Task<Value> task) {
    if (!QTest::qWaitFor([&task] { return task.isReady(); }, 10'000))
        throw std::runtime_error("the task did not complete");
    return task.operator co_await().await_resume();
}

} // namespace lumora::tests
