#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>

namespace lumora::tests {

/// How long the event loop leaves other things waiting.
class Heartbeat {
public:
    /// The largest gaps between two beats.
    struct Gaps {
        std::chrono::milliseconds work{}; ///< of the processor's time, spent by this thread
        std::chrono::milliseconds time{}; ///< in all, what other processes took included

        void add(const Gaps& others) {
            work = std::max(work, others.work);
            time = std::max(time, others.time);
        }
    };

    Heartbeat() {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(std::chrono::milliseconds(1));
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
    }

    void start() {
        m_largest = {};
        m_workAtLast = work();
        m_sinceLast.start();
        m_timer.start();
    }

    /// The largest gaps since the start.
    Gaps stop() {
        beat();
        m_timer.stop();
        return m_largest;
    }

private:
    static std::chrono::milliseconds work() {
        timespec spent{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::seconds(spent.tv_sec) + std::chrono::nanoseconds(spent.tv_nsec));
    }

    void beat() {
        const auto workNow = work();
        m_largest.add({
            .work = workNow - std::exchange(m_workAtLast, workNow),
            .time = std::chrono::milliseconds(m_sinceLast.restart()),
        });
    }

    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    std::chrono::milliseconds m_workAtLast{};
    Gaps m_largest;
};

} // namespace lumora::tests
