#include "linux/time/WallClockTimer.h"

#include "linux/time/TickPlan.h"

#include <algorithm>

using namespace std::chrono;

namespace lumora {

namespace {

constexpr seconds century = days(36525);

Instant wallClock() {
    return floor<microseconds>(system_clock::now());
}

} // namespace

WallClockTimer::WallClockTimer(seconds interval, std::function<void()> tick)
    : m_interval(std::clamp(interval, seconds(1), century))
    , m_tick(std::make_shared<const std::function<void()>>(std::move(tick)))
    , m_deadline(wallClock() + m_interval)
    // A clock that was set may have to bring the deadline nearer.
    , m_descriptor(TimerDescriptor::OnClockSet::Wake, [this] { woken(); }) {
    m_descriptor.set(m_deadline);
}

void WallClockTimer::woken() {
    const TickPlan plan = planTick(m_deadline, m_interval, wallClock());
    m_deadline = plan.deadline;
    m_descriptor.set(m_deadline);
    if (plan.due) {
        const auto tick = m_tick;
        (*tick)(); // may have destroyed this timer
    }
}

} // namespace lumora
