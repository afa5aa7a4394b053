#pragma once

#include "linux/time/TimerDescriptor.h"
#include "platform/Clock.h"

#include <functional>

namespace lumora {

/// A call at a moment of the wall clock, whatever suspends and clock steps lie before it. The call
/// may destroy the alarm.
class WallClockAlarm final : public Alarm {
public:
    WallClockAlarm(Instant time, std::function<void()> ring);

private:
    TimerDescriptor m_descriptor;
};

} // namespace lumora
