#include "linux/time/SystemClock.h"

#include "linux/time/WallClockAlarm.h"
#include "linux/time/WallClockTimer.h"

#include <QTimer>

#include <algorithm>

using namespace std::chrono;

namespace lumora {

namespace {

constexpr milliseconds longestWait = days(24); // a timer's milliseconds are an int

} // namespace

/// Suspends a coroutine until its entry among the clock's waits runs out.
class SystemClock::Awaiter {
public:
    Awaiter(SystemClock& clock, milliseconds duration)
        : m_clock(clock)
        , m_duration(std::min(duration, longestWait)) {}

    bool await_ready() const { return m_duration <= milliseconds::zero() || m_clock.m_closing; }

    void await_suspend(std::coroutine_handle<> waiter) {
        const auto wait =
            m_clock.m_waits.insert(m_clock.m_waits.end(), Wait{waiter, std::make_unique<QTimer>()});
        wait->timer->setSingleShot(true);
        wait->timer->setTimerType(Qt::PreciseTimer); // a coarse one may be early
        QObject::connect(
            wait->timer.get(), &QTimer::timeout, wait->timer.get(), [&clock = m_clock, wait] {
                const auto resumed = wait->waiter;
                // The timer is the caller here and must outlive the call.
                wait->timer.release()->deleteLater();
                clock.m_waits.erase(wait);
                resumed.resume();
            });
        wait->timer->start(m_duration);
    }

    void await_resume() const {}

private:
    SystemClock& m_clock;
    milliseconds m_duration;
};

SystemClock::SystemClock() = default;

SystemClock::~SystemClock() {
    m_closing = true;
    while (!m_waits.empty()) {
        const auto resumed = m_waits.front().waiter;
        m_waits.pop_front();
        resumed.resume();
    }
}

Instant SystemClock::now() const {
    return floor<microseconds>(system_clock::now());
}

std::unique_ptr<RepeatingTimer> SystemClock::every(seconds interval, std::function<void()> tick) {
    return std::make_unique<WallClockTimer>(interval, std::move(tick));
}

std::unique_ptr<Alarm> SystemClock::at(Instant time, std::function<void()> ring) {
    return std::make_unique<WallClockAlarm>(time, std::move(ring));
}

QCoro::Task<> SystemClock::wait(milliseconds duration) {
    Awaiter runningOut(*this, duration);
    co_await runningOut;
}

} // namespace lumora
