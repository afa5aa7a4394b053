#include "linux/time/SystemClock.h"

#include "linux/time/TickPlan.h"
#include "linux/time/WakeUp.h"

#include <QTimer>

#include <algorithm>

using namespace std::chrono;

namespace lumora {

namespace {

constexpr milliseconds longestWait = days(24); // a timer's milliseconds are an int
constexpr seconds century = days(36525);

Instant wallClock() {
    return floor<microseconds>(system_clock::now());
}

/// A repetition that lasts through suspend and clock steps. It costs one wake-up of the process a
/// tick. The tick may destroy it.
class WallClockTimer final : public RepeatingTimer {
public:
    WallClockTimer(seconds interval, std::function<void()> tick)
        : m_interval(std::clamp(interval, seconds(1), century))
        , m_tick(std::move(tick))
        , m_deadline(wallClock() + m_interval) {
        m_wakeUp.set(m_deadline);
    }

private:
    void woken() {
        const TickPlan plan = planTick(m_deadline, m_interval, wallClock());
        m_deadline = plan.deadline;
        m_wakeUp.set(m_deadline);
        if (plan.due) {
            const auto tick = m_tick; // outlives this object, should the tick destroy it
            tick();
        }
    }

    const seconds m_interval;
    const std::function<void()> m_tick;
    Instant m_deadline;
    // A clock that was set may have to bring the deadline nearer.
    WakeUp m_wakeUp{WakeUp::OnClockSet::Wake, [this] { woken(); }};
};

/// A call at a moment, whatever suspends and clock steps lie before it. The call may destroy it.
class WallClockAlarm final : public Alarm {
public:
    WallClockAlarm(Instant time, std::function<void()> ring)
        : m_wakeUp(WakeUp::OnClockSet::WaitOn, std::move(ring)) {
        m_wakeUp.set(time);
    }

private:
    WakeUp m_wakeUp;
};

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
    return wallClock();
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
