#pragma once

#include "support/Patience.h"

#include <QCoroTask>
#include <QTest>

#include <stdexcept>

namespace lumora::tests {

/// Runs the event loop until `task` has completed, and hands its value over. Throws when
/// the patience is over.
template <typename Value>
Value awaitValue(QCoro::Task<Value> task) {
    if (!QTest::qWaitFor([&task] { return task.isReady(); }, patience))
        throw std::runtime_error("the task did not complete");
    return task.operator co_await().await_resume();
}

} // namespace lumora::tests
