#pragma once

#include "briefing/Instant.h"

#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>

namespace lumora {

/// A call at a moment of the wall clock. The kernel's timer keeps it, which costs nothing until it
/// wakes; where the kernel gives none, for want of descriptors, the clock is looked at instead.
class WakeUp {
public:
    /// What happens when the clock is set before the time has come.
    enum class OnClockSet {
        WaitOn, ///< nothing: the moment comes earlier, later, or now
        Wake,   ///< the call comes at once; it may come without any such reason, too
    };

    /// `woken` is what is called; it may destroy this object.
    WakeUp(OnClockSet onClockSet, std::function<void()> woken);
    ~WakeUp();
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;

    /// Wakes once at `time`, instead of any earlier wish. A time that has passed wakes at once.
    void set(Instant time);

private:
    void look();
    void wake();

    const OnClockSet m_onClockSet;
    const std::function<void()> m_woken;
    const int m_descriptor; ///< the kernel's timer; -1 where there is none
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_lookout; ///< stands in for the kernel's timer
    Instant m_time;
};

} // namespace lumora
