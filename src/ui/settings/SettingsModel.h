#pragma once

#include "texts/MenuBarLabel.h"

#include <QCoroTask>
#include <QObject>

#include <tl/expected.hpp>

#include <functional>
#include <optional>

namespace lumora {

class AppState;
class KeychainService;
class LoginItemRegistry;
class LumoService;
class MeetingReminders;
class Preferences;
class SecretStore;

/// What the settings window shows, and what its controls do. Preferences, token and login item are
/// kept by others; of its own it has only what the user has typed but not saved, and what became of
/// the last thing they did.
class SettingsModel : public QObject {
    Q_OBJECT

public:
    /// What the model works with. Everything must outlive it.
    struct Dependencies {
        AppState& state;
        Preferences& preferences;
        SecretStore& secrets;
        KeychainService& keychain;
        LumoService& service;
        LoginItemRegistry& loginItems;
        MeetingReminders& reminders;
        QString desktop = {}; ///< the session's XDG_CURRENT_DESKTOP
    };

    explicit SettingsModel(const Dependencies& dependencies);

    /// The window comes up: reads token and login item anew. `changed` is emitted from here on.
    void appear();

    /// The window was away and may show an old state of the login item.
    void lookAgain();

    /// The window is gone: forgets the token. `changed` is no longer emitted.
    void disappear();

    /// What to say below the control of the preference `key`: why what the user chose holds for
    /// this run of the program only. Absent where it is stored.
    [[nodiscard]] std::optional<QString> unstoredMessage(const QString& key) const;

    /// The address of the briefing; every change is stored at once.
    QString endpointURL() const;
    void setEndpointURL(const QString& endpoint);

    /// What stands in the token field.
    const QString& token() const { return m_token; }

    void setToken(const QString& token);

    [[nodiscard]] bool canSaveToken() const { return !m_token.isEmpty(); }

    /// Stores the token as it stands, empty or not, and refreshes with it.
    void saveToken();

    /// Fetches the briefing once, with the token in the field, or else the stored one, and says in
    /// `testResult` how that went. Refreshes when it went well. Nothing while a test runs.
    void testConnection();

    bool isTesting() const { return m_testing; }

    /// One line on the last save or test; absent before the first one and while a test runs.
    const std::optional<QString>& testResult() const { return m_testResult; }

    /// Minutes between two refreshes. A new choice counts from now.
    qint64 refreshMinutes() const;
    void setRefreshMinutes(qint64 minutes);

    /// Where the switch stands: once it was moved, where the desktop's answer has put it.
    bool launchAtLogin() const { return m_launchAtLogin; }

    void setLaunchAtLogin(bool enabled);

    /// What to say below the switch: the last error, or else a hint on the present state.
    std::optional<QString> loginItemMessage() const;

    /// What a hint below the switch means on this desktop; absent where there is none.
    std::optional<QString> loginItemExplanation() const;

    /// What the note about the token means on this desktop, as of when the window came up.
    const QString& keychainExplanation() const { return m_keychainExplanation; }

    /// Whether to remind of meetings. A change asks for permission and brings the reminders in
    /// line.
    bool notifyBeforeMeetings() const;
    void setNotifyBeforeMeetings(bool notify);

    /// The label without a meeting.
    MenuBarAmbient menuBarAmbient() const;
    void setMenuBarAmbient(MenuBarAmbient ambient);

Q_SIGNALS:
    /// Something that the window shows has changed.
    void changed();

private:
    QString storedToken() const;
    void storeToken();
    void becameReadable();
    void announce();
    void keep(const std::function<tl::expected<void, QString>()>& store);
    [[nodiscard]] QCoro::Task<> runTest();

    Dependencies m_with;
    bool m_shown = false;
    QString m_token;
    bool m_tokenTouched = false;      ///< by the user, since the window came up
    std::optional<QString> m_unsaved; ///< a token that the store has not taken yet
    std::optional<QString> m_testResult;
    bool m_testing = false;
    QString m_keychainExplanation;
    bool m_launchAtLogin = false;
    std::optional<QString> m_loginItemError;
    bool m_storing = false; ///< a preference, and is told so by the preferences themselves
    QString m_storeError; ///< why a preference could not be stored the last time that it could not
};

} // namespace lumora
