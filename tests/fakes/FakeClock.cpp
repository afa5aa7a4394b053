#include "fakes/FakeClock.h"

#include <algorithm>

namespace lumora::tests {

class FakeClock::Timer final : public RepeatingTimer {
public:
    explicit Timer(std::shared_ptr<Alarm> alarm)
        : m_alarm(std::move(alarm)) {}

    ~Timer() override { m_alarm->active = false; }

private:
    std::shared_ptr<Alarm> m_alarm;
};

FakeClock::FakeClock(Instant start)
    : m_now(start) {}

FakeClock::~FakeClock() {
    while (!m_alarms.empty()) {
        const auto alarms = std::exchange(m_alarms, {});
        for (const auto& alarm : alarms) {
            if (!alarm->tick)
                alarm->waitOver.complete({});
        }
    }
}

std::unique_ptr<RepeatingTimer>
FakeClock::every(std::chrono::seconds interval, std::function<void()> tick) {
    auto alarm = std::make_shared<Alarm>();
    alarm->due = m_now + interval;
    alarm->interval = interval;
    alarm->tick = std::move(tick);
    m_alarms.push_back(alarm);
    return std::make_unique<Timer>(std::move(alarm));
}

QCoro::Task<> FakeClock::wait(std::chrono::milliseconds duration) {
    m_waits.push_back(duration);
    const auto alarm = std::make_shared<Alarm>();
    alarm->due = m_now + duration;
    m_alarms.push_back(alarm);
    co_await alarm->waitOver.value();
}

void FakeClock::advance(std::chrono::microseconds duration) {
    const Instant end = m_now + duration;
    while (const auto alarm = earliestDueBy(end)) {
        m_now = std::max(m_now, alarm->due);
        fire(alarm);
    }
    m_now = end;
}

void FakeClock::suspend(std::chrono::microseconds duration) {
    m_now += duration;
    while (const auto alarm = earliestDueBy(m_now))
        fire(alarm);
}

std::vector<std::chrono::seconds> FakeClock::timerIntervals() const {
    std::vector<std::chrono::seconds> intervals;
    for (const auto& alarm : m_alarms) {
        if (alarm->active && alarm->tick)
            intervals.push_back(alarm->interval);
    }
    return intervals;
}

std::size_t FakeClock::pendingWaitCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        m_alarms, [](const auto& alarm) { return alarm->active && !alarm->tick; }));
}

std::shared_ptr<FakeClock::Alarm> FakeClock::earliestDueBy(Instant limit) {
    std::erase_if(m_alarms, [](const auto& alarm) { return !alarm->active; });
    const auto earliest =
        std::ranges::min_element(m_alarms, {}, [](const auto& alarm) { return alarm->due; });
    return earliest != m_alarms.end() && (*earliest)->due <= limit ? *earliest : nullptr;
}

void FakeClock::fire(const std::shared_ptr<Alarm>& alarm) {
    if (alarm->tick) {
        alarm->due = m_now + alarm->interval;
        const auto tick = alarm->tick; // the tick may end its own timer
        tick();
    } else {
        alarm->active = false;
        alarm->waitOver.complete({});
    }
}

} // namespace lumora::tests
