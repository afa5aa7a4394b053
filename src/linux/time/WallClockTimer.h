#pragma once

#include "linux/time/TimerDescriptor.h"
#include "platform/Clock.h"

#include <chrono>
#include <functional>
#include <memory>

namespace lumora {

/// A repetition kept by the wall clock through suspend and clock steps. It costs one wake-up of
/// the process a tick. The tick may destroy the timer.
class WallClockTimer final : public RepeatingTimer {
public:
    /// Starts at once. Intervals below a second count as one, those above a century as a century.
    WallClockTimer(std::chrono::seconds interval, std::function<void()> tick);

private:
    void woken();

    const std::chrono::seconds m_interval;
    const std::shared_ptr<const std::function<void()>> m_tick; // shared with a tick under way
    Instant m_deadline;
    TimerDescriptor m_descriptor;
};

} // namespace lumora
