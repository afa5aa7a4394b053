#pragma once

#include "briefing/Instant.h"

#include <QCoroTask>

#include <chrono>
#include <functional>
#include <memory>

namespace lumora {

/// A running repetition; destroying it ends the repetition.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
};

/// A call that is yet to come; destroying it cancels the call.
class Alarm {
public:
    virtual ~Alarm() = default;
};

/// The wall clock and what can be timed by it. Everything is called on, and calls back on, the
/// main thread.
class Clock {
public:
    virtual ~Clock() = default;

    /// The current time.
    [[nodiscard]] virtual Instant now() const = 0;

    /// Calls `tick` every `interval` of wall-clock time, first after one interval. Time spent in
    /// suspend counts: a tick that came due meanwhile fires once, at once, after resuming.
    [[nodiscard]] virtual std::unique_ptr<RepeatingTimer>
    every(std::chrono::seconds interval, std::function<void()> tick) = 0;

    /// Calls `ring` once, when the wall clock shows `time` or later, however it came to do so: by
    /// running on, by being set, or by waking from suspend. Never before this function returns.
    [[nodiscard]] virtual std::unique_ptr<Alarm> at(Instant time, std::function<void()> ring) = 0;

    /// Completes after `duration`.
    virtual QCoro::Task<> wait(std::chrono::milliseconds duration) = 0;
};

} // namespace lumora
