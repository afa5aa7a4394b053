#pragma once

#include "briefing/LoadState.h"
#include "platform/Clock.h"

#include <QCoroTask>
#include <QObject>
#include <QUrl>

#include <tl/expected.hpp>

#include <memory>
#include <optional>
#include <set>

namespace lumora {

class KeychainService;
class LumoAction;
class LumoService;
class MeetingReminders;
class Preferences;
class SecretStore;
class WakeMonitor;

/// The one truth that every view renders from: the latest briefing, how fetching it went, and the
/// user's actions on it. Starts polling when it is made. Lives on the main thread; knows nothing of
/// views. May be destroyed in the middle of anything it does.
class AppState : public QObject {
    Q_OBJECT

public:
    /// What the state works with. Everything must outlive it.
    struct Dependencies {
        Clock& clock;
        Preferences& preferences;
        SecretStore& secrets;
        KeychainService& keychain;
        LumoService& service;
        MeetingReminders& reminders;
        WakeMonitor& wake;
    };

    explicit AppState(const Dependencies& dependencies);

    const LoadState& state() const { return m_state; }

    /// The latest briefing that was fetched; absent until the first success, then never again.
    const std::optional<Briefing>& lastGood() const { return m_lastGood; }

    /// When `lastGood` was stored.
    std::optional<Instant> lastUpdated() const { return m_lastUpdated; }

    /// Keys of the actions in flight: one per thing acted on, so that it can be shown as busy.
    const std::set<QString>& pending() const { return m_pending; }

    /// The message of the last action that failed or was declined; absent from the start of the
    /// next action on.
    const std::optional<QString>& actionError() const { return m_actionError; }

    /// The address of the briefing as the user typed it; read afresh, empty when not set.
    QString endpointURL() const;

    /// Stores the address of the briefing, for the next fetch; see `Preferences::setValue`.
    [[nodiscard]] tl::expected<void, QString> setEndpointURL(const QString& endpoint);

    /// Minutes between two refreshes as the user chose; read afresh.
    qint64 refreshMinutes() const;

    /// Stores the minutes between two refreshes, for the next time that polling starts; see
    /// `Preferences::setValue`.
    [[nodiscard]] tl::expected<void, QString> setRefreshMinutes(qint64 minutes);

    /// Whether there is both a readable token and an endpoint. Asks the credential store.
    bool isConfigured() const;

    /// The site that the endpoint belongs to; absent when the endpoint has no scheme or host.
    [[nodiscard]] std::optional<QUrl> dashboardURL() const;

    /// Refreshes at once and then at the user's interval, counted from now.
    void startPolling();

    /// Fetches the briefing once; completes when its outcome is in place. Refreshes may overlap:
    /// the last to complete wins.
    [[nodiscard]] QCoro::Task<> refresh();

    /// Has the service do `action`, unless an action of the same `key` is in flight. True when the
    /// service took it. Completes, and gives the key free, when the next briefing is in place;
    /// after a failure, at once.
    [[nodiscard]] QCoro::Task<bool> perform(LumoAction action, QString key);

    /// Puts `text` without its surrounding white space into the inbox, under the key
    /// `ActionKeys::capture`. False when it is blank, another capture is in flight, or the service
    /// did not take it.
    [[nodiscard]] QCoro::Task<bool> capture(QString text);

    /// Asks for new spending figures, under the key `ActionKeys::spending`, and completes when they
    /// are in place, when the service declined, or when they have not come after about a minute.
    [[nodiscard]] QCoro::Task<> refreshSpending();

Q_SIGNALS:
    /// Something that views show has changed.
    void changed();

private:
    /// The preferences that fetching goes by.
    struct FetchSettings {
        QString endpoint;
        qint64 minutes = 0;
        bool reminders = false; ///< which a fetch brings into line

        bool operator==(const FetchSettings&) const = default;
    };

    FetchSettings fetchSettings() const;
    void followPreferences();
    void observeWake();
    void setState(LoadState state);
    void accept(Briefing briefing);

    [[nodiscard]] bool begin(const QString& key);
    void finish(const QString& key);
    void finishFailed(const QString& key, const QString& message);
    [[nodiscard]] QCoro::Task<> awaitFreshSpending(std::optional<double> newerThan);

    Dependencies m_with;
    LoadState m_state;
    std::optional<Briefing> m_lastGood;
    std::optional<Instant> m_lastUpdated;
    std::set<QString> m_pending;
    std::optional<QString> m_actionError;
    std::unique_ptr<RepeatingTimer> m_timer;
    FetchSettings m_followed;       ///< what fetching goes by already, or with the next fetch
    bool m_restartedLately = false; ///< because another program changed the preferences
};

/// The interval between two refreshes: at least a minute, at most a year.
std::chrono::seconds pollingInterval(qint64 minutes);

/// Scheme, user, host and port of `endpoint`; absent when it has no scheme or no host.
[[nodiscard]] std::optional<QUrl> siteRoot(const QString& endpoint);

} // namespace lumora
