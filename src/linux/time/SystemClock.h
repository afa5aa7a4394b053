#pragma once

#include "platform/Clock.h"

#include <coroutine>
#include <list>

class QTimer;

namespace lumora {

/// The machine's clock. Repetitions and alarms follow the wall clock, waits the time the machine is
/// awake.
class SystemClock final : public Clock {
public:
    SystemClock();

    /// Completes every pending wait at once, so that nobody waits forever for a clock that is gone.
    ~SystemClock() override;
    SystemClock(const SystemClock&) = delete;
    SystemClock& operator=(const SystemClock&) = delete;

    [[nodiscard]] Instant now() const override;

    /// Intervals below a second count as one, those above a century as a century.
    [[nodiscard]] std::unique_ptr<RepeatingTimer>
    every(std::chrono::seconds interval, std::function<void()> tick) override;

    [[nodiscard]] std::unique_ptr<Alarm> at(Instant time, std::function<void()> ring) override;

    /// Completes no earlier than `duration`, at most 24 days, from now.
    QCoro::Task<> wait(std::chrono::milliseconds duration) override;

private:
    struct Wait {
        std::coroutine_handle<> waiter;
        std::unique_ptr<QTimer> timer;
    };

    class Awaiter;

    std::list<Wait> m_waits;
    bool m_closing = false;
};

} // namespace lumora
