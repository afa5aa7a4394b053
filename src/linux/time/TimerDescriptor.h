#pragma once

#include "briefing/Instant.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace lumora {

/// The kernel's timer on the wall clock, in the event loop. It costs nothing until it wakes.
class TimerDescriptor {
public:
    /// What happens when the clock is set before the time has come.
    enum class OnClockSet { WaitOn, Wake };

    /// `woken` is called when the time has come; it may destroy this object.
    TimerDescriptor(OnClockSet onClockSet, std::function<void()> woken);
    ~TimerDescriptor();
    TimerDescriptor(const TimerDescriptor&) = delete;
    TimerDescriptor& operator=(const TimerDescriptor&) = delete;

    /// Wakes once at `time`, instead of any earlier wish. A time that has passed wakes at once.
    void set(Instant time);

private:
    void activated();

    const OnClockSet m_onClockSet;
    const std::shared_ptr<const std::function<void()>> m_woken; // shared with a call under way
    const int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace lumora
