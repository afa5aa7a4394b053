#include "linux/time/WakeUp.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <tuple>

using namespace std::chrono;

namespace lumora {

namespace {

constexpr Instant earliest{microseconds(1)}; // zero would stop the timer

// How late a clock that was set may be noticed where no timer of the kernel tells.
constexpr milliseconds longestBlindness = seconds(1);

itimerspec at(Instant time) {
    const Instant possible = std::max(time, earliest);
    const auto whole = floor<seconds>(possible);
    itimerspec result{};
    result.it_value.tv_sec = whole.time_since_epoch().count();
    result.it_value.tv_nsec = nanoseconds(possible - whole).count();
    return result;
}

} // namespace

WakeUp::WakeUp(OnClockSet onClockSet, std::function<void()> woken)
    : m_onClockSet(onClockSet)
    , m_woken(std::move(woken))
    , m_descriptor(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    if (m_descriptor < 0) {
        m_lookout.setSingleShot(true);
        m_lookout.setTimerType(Qt::PreciseTimer); // a coarse one may be early
        QObject::connect(&m_lookout, &QTimer::timeout, &m_lookout, [this] { look(); });
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        // Whether the timer ran out or the clock was set (ECANCELED), the clock says what is due.
        std::uint64_t expirations = 0;
        std::ignore = read(m_descriptor, &expirations, sizeof expirations);
        wake();
    });
}

WakeUp::~WakeUp() {
    m_notifier.reset();
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void WakeUp::set(Instant time) {
    m_time = time;
    if (m_descriptor < 0) {
        const auto left = ceil<milliseconds>(time - system_clock::now());
        return m_lookout.start(std::clamp(left, milliseconds::zero(), longestBlindness));
    }
    const itimerspec wanted = at(time);
    const bool wakes = m_onClockSet == OnClockSet::Wake;
    const int flags = TFD_TIMER_ABSTIME | (wakes ? TFD_TIMER_CANCEL_ON_SET : 0);
    // ECANCELED tells once of a clock that was set meanwhile; the time is still to be set.
    while (timerfd_settime(m_descriptor, flags, &wanted, nullptr) != 0 && errno == ECANCELED)
        ;
}

void WakeUp::look() {
    // Whoever wants to hear of a clock that was set can tell by itself whether it was.
    if (m_onClockSet == OnClockSet::Wake || m_time <= system_clock::now())
        wake();
    else
        set(m_time);
}

void WakeUp::wake() {
    const auto woken = m_woken; // outlives this object, should the call destroy it
    woken();
}

} // namespace lumora
