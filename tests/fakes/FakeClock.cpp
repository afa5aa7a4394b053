#include "fakes/FakeClock.h"

#include <algorithm>

namespace lumora::tests {

/// What `every` and `at` give out: with it goes what is to come.
template <typename Interface>
class FakeClock::Handle final : public Interface {
public:
    explicit Handle(std::shared_ptr<Coming> coming)
        : m_coming(std::move(coming)) {}

    ~Handle() override { m_coming->active = false; }

private:
    std::shared_ptr<Coming> m_coming;
};

FakeClock::FakeClock(Instant start)
    : m_now(start) {}

FakeClock::~FakeClock() {
    while (!m_coming.empty()) {
        const auto all = std::exchange(m_coming, {});
        for (const auto& coming : all) {
            if (!coming->call)
                coming->waitOver.complete({});
        }
    }
}

std::shared_ptr<FakeClock::Coming> FakeClock::expect(Instant due) {
    m_coming.push_back(std::make_shared<Coming>());
    m_coming.back()->due = due;
    return m_coming.back();
}

std::unique_ptr<RepeatingTimer>
FakeClock::every(std::chrono::seconds interval, std::function<void()> tick) {
    const auto coming = expect(m_now + interval);
    coming->interval = interval;
    coming->call = std::move(tick);
    return std::make_unique<Handle<RepeatingTimer>>(coming);
}

std::unique_ptr<Alarm> FakeClock::at(Instant time, std::function<void()> ring) {
    const auto coming = expect(time);
    coming->call = std::move(ring);
    return std::make_unique<Handle<Alarm>>(coming);
}

QCoro::Task<> FakeClock::wait(std::chrono::milliseconds duration) {
    m_waits.push_back(duration);
    const auto coming = expect(m_now + duration);
    co_await coming->waitOver.value();
}

void FakeClock::advance(std::chrono::microseconds duration) {
    const Instant end = m_now + duration;
    while (const auto coming = earliestDueBy(end)) {
        m_now = std::max(m_now, coming->due);
        fire(coming);
    }
    m_now = end;
}

void FakeClock::suspend(std::chrono::microseconds duration) {
    set(m_now + duration);
}

void FakeClock::set(Instant time) {
    m_now = time;
    while (const auto coming = earliestDueBy(m_now))
        fire(coming);
}

std::vector<std::chrono::seconds> FakeClock::timerIntervals() const {
    std::vector<std::chrono::seconds> intervals;
    for (const auto& coming : m_coming) {
        if (coming->active && coming->interval.count() > 0)
            intervals.push_back(coming->interval);
    }
    return intervals;
}

std::size_t FakeClock::pendingWaitCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        m_coming, [](const auto& coming) { return coming->active && !coming->call; }));
}

std::shared_ptr<FakeClock::Coming> FakeClock::earliestDueBy(Instant limit) {
    std::erase_if(m_coming, [](const auto& coming) { return !coming->active; });
    const auto earliest =
        std::ranges::min_element(m_coming, {}, [](const auto& coming) { return coming->due; });
    return earliest != m_coming.end() && (*earliest)->due <= limit ? *earliest : nullptr;
}

void FakeClock::fire(const std::shared_ptr<Coming>& coming) {
    if (coming->interval.count() > 0)
        coming->due = m_now + coming->interval;
    else
        coming->active = false;
    if (!coming->call) {
        coming->waitOver.complete({});
        return;
    }
    const auto call = coming->call; // it may end its own timer
    call();
}

} // namespace lumora::tests
