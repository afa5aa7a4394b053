// What the user does with the briefing; the rest of the class is in AppState.cpp.

#include "briefing/ActionKeys.h"
#include "service/LumoService.h"
#include "state/AppState.h"

#include <QPointer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora {

namespace {

// New spending figures take the service some seconds, rarely a minute: ask soon at first, then at
// an even pace, and give up after 69 s.
constexpr std::chrono::seconds firstSpendingWait = 3s;
constexpr std::chrono::seconds longestSpendingWait = 10s;
constexpr int maximumSpendingRefreshes = 8;

/// The time stamp of the spending figures; absent without figures.
std::optional<double> spendingStamp(const std::optional<Briefing>& briefing) {
    if (!briefing || !briefing->spending)
        return std::nullopt;
    return briefing->spending->generatedAt;
}

} // namespace

/// Takes `key` for a new action; false when it is taken already.
bool AppState::begin(const QString& key) {
    if (!m_pending.insert(key).second)
        return false;
    m_actionError.reset();
    Q_EMIT changed();
    return true;
}

/// Gives `key` free. Leaves the error alone: it may be that of another action.
void AppState::finish(const QString& key) {
    m_pending.erase(key);
    Q_EMIT changed();
}

void AppState::finishFailed(const QString& key, const QString& message) {
    m_actionError = message;
    finish(key);
}

QCoro::Task<bool> AppState::perform(LumoAction action, QString key) {
    if (!begin(key))
        co_return false;
    const QPointer<AppState> self(this);
    auto performing = m_with.service.perform(std::move(action), endpointURL());
    const auto result = co_await performing;
    if (!self)
        co_return result.has_value();
    if (!result) {
        finishFailed(key, result.error().errorDescription());
        co_return false;
    }
    // Busy until the new briefing is there, so that a row does not flicker back to its old look.
    auto refreshing = refresh();
    co_await refreshing;
    if (self)
        finish(key);
    co_return true;
}

QCoro::Task<bool> AppState::capture(QString text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        co_return false;
    auto performing = perform(LumoAction::capture(trimmed), ActionKeys::capture);
    co_return co_await performing;
}

QCoro::Task<> AppState::refreshSpending() {
    const QString& key = ActionKeys::spending;
    if (!begin(key))
        co_return;
    const QPointer<AppState> self(this);
    const std::optional<double> baseline = spendingStamp(m_lastGood);
    auto asking = m_with.service.perform(LumoAction::spendingRefresh(), endpointURL());
    const auto result = co_await asking;
    if (!self)
        co_return;
    if (!result) {
        finishFailed(key, result.error().errorDescription());
        co_return;
    }
    if (result->queued == std::optional(false)) {
        finishFailed(key, result->reason.value_or(u"Spending was refreshed recently"_s));
        co_return;
    }
    auto waiting = awaitFreshSpending(baseline);
    co_await waiting;
    if (self)
        finish(key);
}

/// Refreshes until there are spending figures with another stamp than `newerThan`, or for too long.
QCoro::Task<> AppState::awaitFreshSpending(std::optional<double> newerThan) {
    const QPointer<AppState> self(this);
    std::chrono::seconds delay = firstSpendingWait;
    for (int attempt = 0; attempt < maximumSpendingRefreshes; ++attempt) {
        auto pause = m_with.clock.wait(delay);
        co_await pause;
        if (!self)
            co_return;
        auto refreshing = refresh();
        co_await refreshing;
        if (!self)
            co_return;
        const auto stamp = spendingStamp(m_lastGood);
        if (stamp && stamp != newerThan)
            co_return;
        delay = std::min(2 * delay, longestSpendingWait);
    }
}

} // namespace lumora
