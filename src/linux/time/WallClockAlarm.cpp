#include "linux/time/WallClockAlarm.h"

namespace lumora {

WallClockAlarm::WallClockAlarm(Instant time, std::function<void()> ring)
    // The kernel keeps the moment itself when the clock is set: it comes earlier, later, or now.
    : m_descriptor(TimerDescriptor::OnClockSet::WaitOn, std::move(ring)) {
    m_descriptor.set(time);
}

} // namespace lumora
