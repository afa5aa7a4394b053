#include "state/AppState.h"

#include "briefing/ActionKeys.h"
#include "platform/AppStorageBacked.h"
#include "platform/SecretStore.h"
#include "platform/Spawn.h"
#include "platform/WakeMonitor.h"
#include "reminders/MeetingReminders.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora {

namespace {

constexpr qint64 minutesPerYear = qint64(365) * 24 * 60;

/// From one restart because of the preferences to the next.
constexpr std::chrono::seconds restartPause = 5s;

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

std::chrono::seconds pollingInterval(qint64 minutes) {
    return std::chrono::minutes(std::clamp<qint64>(minutes, 1, minutesPerYear));
}

std::optional<QUrl> siteRoot(const QString& endpoint) {
    QUrl url(endpoint.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty())
        return std::nullopt;
    url.setPath({});
    url.setQuery(QString());
    url.setFragment(QString());
    return url;
}

AppState::AppState(const Dependencies& dependencies)
    : m_with(dependencies) {
    startPolling();
    observeWake();
    connect(&m_with.secrets, &SecretStore::readable, this, &AppState::startPolling);
    // What the user types into the program itself counts from the next fetch on: half an address
    // must not be sent the token. A file that was saved is meant.
    connect(
        &m_with.preferences, &Preferences::changedElsewhere, this, &AppState::followPreferences);
}

QString AppState::endpointURL() const {
    return AppStorageBacked(m_with.preferences, PreferenceKeys::endpointURL).wrappedValue();
}

tl::expected<void, QString> AppState::setEndpointURL(const QString& endpoint) {
    m_followed.endpoint = endpoint;
    return storePreference(m_with.preferences, PreferenceKeys::endpointURL, endpoint);
}

qint64 AppState::refreshMinutes() const {
    return AppStorageBacked(m_with.preferences, PreferenceKeys::refreshMinutes).wrappedValue();
}

tl::expected<void, QString> AppState::setRefreshMinutes(qint64 minutes) {
    return storePreference(m_with.preferences, PreferenceKeys::refreshMinutes, minutes);
}

bool AppState::isConfigured() const {
    return m_with.keychain.getToken().has_value() && !endpointURL().trimmed().isEmpty();
}

std::optional<QUrl> AppState::dashboardURL() const {
    return siteRoot(endpointURL());
}

void AppState::startPolling() {
    const auto startRefresh = [this] { spawn(refresh()); };
    // Queued, so that whoever restarts the polling is done with its own work first.
    QMetaObject::invokeMethod(this, startRefresh, Qt::QueuedConnection);
    m_followed = fetchSettings();
    m_timer = m_with.clock.every(pollingInterval(m_followed.minutes), startRefresh);
}

AppState::FetchSettings AppState::fetchSettings() const {
    const AppStorageBacked reminders(m_with.preferences, PreferenceKeys::notifyBeforeMeetings);
    return {endpointURL(), refreshMinutes(), reminders.wrappedValue()};
}

/// Starts anew where another program has changed what fetching goes by, but not again and again: a
/// program that writes all the time must not make the service work all the time.
void AppState::followPreferences() {
    if (m_restartedLately || fetchSettings() == m_followed)
        return;
    startPolling();
    m_restartedLately = true;
    spawn(this, m_with.clock.wait(restartPause), [this] {
        m_restartedLately = false;
        followPreferences();
    });
}

void AppState::observeWake() {
    connect(&m_with.wake, &WakeMonitor::woke, this, &AppState::startPolling);
}

QCoro::Task<> AppState::refresh() {
    const FetchSettings settings = fetchSettings();
    m_followed.endpoint = settings.endpoint;
    m_followed.reminders = settings.reminders;
    if (!isConfigured()) {
        m_with.keychain.askToUnlock();
        setState(LoadState::failed(u"Not configured — open Settings"_s));
        co_return;
    }
    // With a briefing to show, the state stays as it is: no flicker on every poll.
    if (!m_lastGood)
        setState(LoadState::loading());

    const QPointer<AppState> self(this);
    auto fetched = co_await m_with.service.fetchBriefing(endpointURL());
    if (!self)
        co_return;

    if (fetched)
        accept(std::move(*fetched));
    else
        setState(LoadState::failed(fetched.error().errorDescription()));
}

void AppState::setState(LoadState state) {
    m_state = std::move(state);
    Q_EMIT changed();
}

void AppState::accept(Briefing briefing) {
    m_lastGood = std::move(briefing);
    m_lastUpdated = m_with.clock.now();
    setState(LoadState::loaded(*m_lastGood));
    m_with.reminders.scheduleUpcoming(*m_lastGood);
}

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
    const auto result = co_await m_with.service.perform(std::move(action), endpointURL());
    if (!self)
        co_return result.has_value();
    if (!result) {
        finishFailed(key, result.error().errorDescription());
        co_return false;
    }
    // Busy until the new briefing is there, so that a row does not flicker back to its old look.
    co_await refresh();
    if (self)
        finish(key);
    co_return true;
}

QCoro::Task<bool> AppState::capture(QString text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        co_return false;
    co_return co_await perform(LumoAction::capture(trimmed), ActionKeys::capture);
}

QCoro::Task<> AppState::refreshSpending() {
    const QString& key = ActionKeys::spending;
    if (!begin(key))
        co_return;
    const QPointer<AppState> self(this);
    const std::optional<double> baseline = spendingStamp(m_lastGood);
    const auto result =
        co_await m_with.service.perform(LumoAction::spendingRefresh(), endpointURL());
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
    co_await awaitFreshSpending(baseline);
    if (self)
        finish(key);
}

/// Refreshes until there are spending figures with another stamp than `newerThan`, or for too long.
QCoro::Task<> AppState::awaitFreshSpending(std::optional<double> newerThan) {
    const QPointer<AppState> self(this);
    std::chrono::seconds delay = firstSpendingWait;
    for (int attempt = 0; attempt < maximumSpendingRefreshes; ++attempt) {
        co_await m_with.clock.wait(delay);
        if (!self)
            co_return;
        co_await refresh();
        if (!self)
            co_return;
        const auto stamp = spendingStamp(m_lastGood);
        if (stamp && stamp != newerThan)
            co_return;
        delay = std::min(2 * delay, longestSpendingWait);
    }
}

} // namespace lumora
