#include "linux/time/TimerDescriptor.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <system_error>

using namespace std::chrono;

namespace lumora {

namespace {

constexpr Instant earliest{microseconds(1)}; // zero would stop the timer

int openTimer() {
    const int descriptor = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (descriptor < 0)
        throw std::system_error(errno, std::system_category(), "timerfd_create");
    return descriptor;
}

itimerspec at(Instant time) {
    const Instant possible = std::max(time, earliest);
    const auto whole = floor<seconds>(possible);
    itimerspec result{};
    result.it_value.tv_sec = whole.time_since_epoch().count();
    result.it_value.tv_nsec = nanoseconds(possible - whole).count();
    return result;
}

} // namespace

TimerDescriptor::TimerDescriptor(OnClockSet onClockSet, std::function<void()> woken)
    : m_onClockSet(onClockSet)
    , m_woken(std::make_shared<const std::function<void()>>(std::move(woken)))
    , m_descriptor(openTimer())
    , m_notifier(std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read)) {
    QObject::connect(
        m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { activated(); });
}

TimerDescriptor::~TimerDescriptor() {
    m_notifier.reset();
    close(m_descriptor);
}

void TimerDescriptor::set(Instant time) {
    const itimerspec wanted = at(time);
    const bool wakes = m_onClockSet == OnClockSet::Wake;
    const int flags = TFD_TIMER_ABSTIME | (wakes ? TFD_TIMER_CANCEL_ON_SET : 0);
    // ECANCELED tells once of a clock that was set meanwhile; the time is still to be set.
    while (timerfd_settime(m_descriptor, flags, &wanted, nullptr) != 0 && errno == ECANCELED)
        ;
}

void TimerDescriptor::activated() {
    // Whether the timer ran out or the clock was set (ECANCELED), the clock says what is due.
    std::uint64_t expirations = 0;
    [[maybe_unused]] const auto size = read(m_descriptor, &expirations, sizeof expirations);
    const auto woken = m_woken;
    (*woken)(); // may have destroyed this object
}

} // namespace lumora
