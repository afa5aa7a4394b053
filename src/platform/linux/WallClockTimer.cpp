#include "platform/linux/WallClockTimer.h"

#include "platform/linux/TickPlan.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>

using namespace std::chrono;

namespace lumora {

namespace {

constexpr seconds century = days(36525);

Instant wallClock() {
    return floor<microseconds>(system_clock::now());
}

int openTimer() {
    const int descriptor = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (descriptor < 0)
        throw std::system_error(errno, std::system_category(), "timerfd_create");
    return descriptor;
}

itimerspec at(Instant deadline) {
    const auto whole = floor<seconds>(deadline);
    itimerspec result{};
    result.it_value.tv_sec = whole.time_since_epoch().count();
    result.it_value.tv_nsec = nanoseconds(deadline - whole).count();
    return result;
}

} // namespace

WallClockTimer::WallClockTimer(seconds interval, std::function<void()> tick)
    : m_interval(std::clamp(interval, seconds(1), century))
    , m_tick(std::make_shared<const std::function<void()>>(std::move(tick)))
    , m_deadline(wallClock() + m_interval)
    , m_descriptor(openTimer())
    , m_notifier(std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read)) {
    QObject::connect(
        m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { woken(); });
    arm();
}

WallClockTimer::~WallClockTimer() {
    m_notifier.reset();
    close(m_descriptor);
}

void WallClockTimer::woken() {
    // Whether the timer ran out or the clock was set (ECANCELED), the clock says what is due.
    std::uint64_t expirations = 0;
    [[maybe_unused]] const auto size = read(m_descriptor, &expirations, sizeof expirations);
    const TickPlan plan = planTick(m_deadline, m_interval, wallClock());
    m_deadline = plan.deadline;
    arm();
    if (plan.due) {
        const auto tick = m_tick;
        (*tick)(); // may have destroyed this timer
    }
}

void WallClockTimer::arm() {
    const itimerspec deadline = at(m_deadline);
    const int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
    // ECANCELED tells once of a clock that was set meanwhile; the deadline may have to come nearer.
    while (timerfd_settime(m_descriptor, flags, &deadline, nullptr) != 0 && errno == ECANCELED)
        ;
}

} // namespace lumora
