#pragma once

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace lumora::tests {

/// How long a test waits for what has to come, in milliseconds: far longer than it takes on the
/// busiest of machines. Only a test that fails waits so long.
constexpr int patience = 60'000;

/// Lets everything happen that is due now, and what that makes due in turn.
inline void drainEvents() {
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

/// Drains the events and then lets every timer go off that is due within `longest`: one that takes
/// twice as long is started behind them, and timers go off in the order of their times, on however
/// busy a machine.
inline void outlastTimers(std::chrono::milliseconds longest) {
    drainEvents();
    QEventLoop loop;
    QTimer::singleShot(2 * longest, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace lumora::tests
