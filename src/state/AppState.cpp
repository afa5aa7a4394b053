#include "state/AppState.h"

#include "platform/AppStorageBacked.h"
#include "platform/SecretStore.h"
#include "platform/WakeMonitor.h"
#include "reminders/MeetingReminders.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"

#include <QPointer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr qint64 minutesPerYear = qint64(365) * 24 * 60;

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

AppState::AppState(const Collaborators& collaborators)
    : m_with(collaborators) {
    startPolling();
    observeWake();
    connect(&m_with.secrets, &SecretStore::readable, this, &AppState::startPolling);
    // What the user types into the program itself counts from the next fetch on: half an address
    // must not be sent the token. A file that was saved is meant.
    connect(&m_with.preferences, &Preferences::changedElsewhere, this, &AppState::startPolling);
}

QString AppState::endpointURL() const {
    return AppStorageBacked(m_with.preferences, PreferenceKeys::endpointURL).wrappedValue();
}

void AppState::setEndpointURL(const QString& endpoint) {
    storePreference(m_with.preferences, PreferenceKeys::endpointURL, endpoint);
}

qint64 AppState::refreshMinutes() const {
    return AppStorageBacked(m_with.preferences, PreferenceKeys::refreshMinutes).wrappedValue();
}

void AppState::setRefreshMinutes(qint64 minutes) {
    storePreference(m_with.preferences, PreferenceKeys::refreshMinutes, minutes);
}

bool AppState::isConfigured() const {
    return m_with.keychain.getToken().has_value() && !endpointURL().trimmed().isEmpty();
}

std::optional<QUrl> AppState::dashboardURL() const {
    return siteRoot(endpointURL());
}

void AppState::startPolling() {
    const auto startRefresh = [this] { refresh(); };
    // Queued, so that whoever restarts the polling is done with its own work first.
    QMetaObject::invokeMethod(this, startRefresh, Qt::QueuedConnection);
    m_timer = m_with.clock.every(pollingInterval(refreshMinutes()), startRefresh);
}

void AppState::observeWake() {
    connect(&m_with.wake, &WakeMonitor::woke, this, &AppState::startPolling);
}

QCoro::Task<> AppState::refresh() {
    if (!isConfigured()) {
        setState(LoadState::failed(u"Not configured — open Settings"_s));
        co_return;
    }
    // With a briefing to show, the state stays as it is: no flicker on every poll.
    if (!m_lastGood)
        setState(LoadState::loading());

    const QPointer<AppState> self(this);
    const QString endpoint = endpointURL();
    auto fetched = co_await m_with.service.fetchBriefing(endpoint);
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

} // namespace lumora
