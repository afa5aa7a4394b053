#pragma once

#include "platform/Clock.h"
#include "platform/Completion.h"

#include <variant>
#include <vector>

namespace lumora::tests {

/// A clock that stands still until the test moves it. Waits that are under way when it is
/// destroyed complete at once, so that no coroutine is left behind.
class FakeClock final : public Clock {
public:
    /// 2025-03-04 09:00:00 UTC.
    static constexpr Instant defaultStart{std::chrono::seconds(1'741'078'800)};

    explicit FakeClock(Instant start = defaultStart);
    ~FakeClock() override;

    Instant now() const override { return m_now; }

    std::unique_ptr<RepeatingTimer>
    every(std::chrono::seconds interval, std::function<void()> tick) override;
    std::unique_ptr<Alarm> at(Instant time, std::function<void()> ring) override;
    QCoro::Task<> wait(std::chrono::milliseconds duration) override;

    /// Lets `duration` pass. Whatever comes due on the way happens at its own moment and in order,
    /// also what the ticks and the resumed coroutines begin; at equal times in order of beginning.
    void advance(std::chrono::microseconds duration);

    /// Lets `duration` pass in suspend: whatever came due happens once, at the moment of resuming.
    void suspend(std::chrono::microseconds duration);

    /// Sets the clock, as its user does: whatever comes due by that happens once, at `time`.
    void set(Instant time);

    /// The length of every wait that was begun, in order.
    const std::vector<std::chrono::milliseconds>& waits() const { return m_waits; }

    /// The intervals of the repeating timers that are running, in order of their start.
    std::vector<std::chrono::seconds> timerIntervals() const;

    /// How many waits have not completed.
    std::size_t pendingWaitCount() const;

private:
    /// Something that will happen: a call when there is one, else the end of a wait.
    struct Coming {
        Instant due;
        std::chrono::seconds interval{}; ///< from one call to the next; zero: there is only one
        std::function<void()> call;
        Completion<std::monostate> waitOver;
        bool active = true;
    };

    template <typename Interface>
    class Handle;

    std::shared_ptr<Coming> expect(Instant due);
    std::shared_ptr<Coming> earliestDueBy(Instant limit);
    void fire(const std::shared_ptr<Coming>& coming);

    Instant m_now;
    std::vector<std::shared_ptr<Coming>> m_coming;
    std::vector<std::chrono::milliseconds> m_waits;
};

} // namespace lumora::tests
