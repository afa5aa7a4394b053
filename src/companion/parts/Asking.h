#pragma once

#include <QString>

#include <tl/expected.hpp>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace lumora::companion {

/// A part, or why there is none, in one line for people.
template <typename Part>
using PartOutcome = tl::expected<Part, QString>;

/// Finds out what a part is at an instant. Answers once, later, from the event loop.
template <typename Part>
using AskForPart =
    std::function<void(std::chrono::sys_seconds now, std::function<void(PartOutcome<Part>)>)>;

/// How a source stands, for people.
struct SourceState {
    std::optional<std::chrono::sys_seconds> readAt; ///< absent: never yet
    std::optional<QString> error;                   ///< why the last attempt failed
    std::optional<std::chrono::sys_seconds> failingSince;

    bool operator==(const SourceState&) const = default;
};

/// A part that is asked for again and again, of which the last good one stays. Must outlive what
/// it asks.
template <typename Part>
class KeptPart {
public:
    /// `changed` is called after each answer.
    KeptPart(AskForPart<Part> ask, std::chrono::seconds interval, std::function<void()> changed)
        : m_ask(std::move(ask))
        , m_interval(interval)
        , m_changed(std::move(changed)) {}

    KeptPart(const KeptPart&) = delete;
    KeptPart& operator=(const KeptPart&) = delete;

    /// The last good one; absent before the first.
    const std::optional<Part>& part() const { return m_part; }

    const SourceState& state() const { return m_state; }

    bool isAsking() const { return m_isAsking; }

    /// Asks unless that was done less than an interval ago.
    void refreshDue(std::chrono::sys_seconds now) {
        const bool isFresh = m_asked && *m_asked <= now && now - *m_asked < m_interval;
        if (!isFresh)
            refresh(now, {});
    }

    /// Asks at once, or, while an answer is under way, once more behind it. `done`, where there is
    /// one, is called after the answer to that.
    void refresh(std::chrono::sys_seconds now, std::function<void()> done) {
        m_asked = now;
        if (m_isAsking) {
            m_askAgain = true;
            if (done)
                m_next.push_back(std::move(done));
            return;
        }
        if (done)
            m_waiting.push_back(std::move(done));
        m_isAsking = true;
        m_ask(now, [this, now](PartOutcome<Part> outcome) { take(std::move(outcome), now); });
    }

private:
    void take(PartOutcome<Part> outcome, std::chrono::sys_seconds now) {
        m_isAsking = false;
        if (outcome) {
            m_part = *std::move(outcome);
            m_state = {now, {}, {}};
        } else {
            m_state.error = outcome.error();
            m_state.failingSince = m_state.failingSince.value_or(now);
        }
        m_changed();
        for (const auto& done : std::exchange(m_waiting, {}))
            done();
        if (std::exchange(m_askAgain, false) && !m_isAsking) {
            m_waiting = std::exchange(m_next, {});
            refresh(*m_asked, {});
        }
    }

    const AskForPart<Part> m_ask;
    const std::chrono::seconds m_interval;
    const std::function<void()> m_changed;
    std::optional<Part> m_part;
    SourceState m_state;
    std::optional<std::chrono::sys_seconds> m_asked; ///< absent: never yet
    bool m_isAsking = false;
    bool m_askAgain = false;
    std::vector<std::function<void()>> m_waiting; ///< for the answer that is under way
    std::vector<std::function<void()>> m_next;    ///< for the one behind it
};

} // namespace lumora::companion
