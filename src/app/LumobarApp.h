#pragma once

#include "app/AppDelegate.h"
#include "app/PanelController.h"
#include "app/RemoteActions.h"
#include "app/SettingsController.h"
#include "app/StatusAreaNotice.h"
#include "app/StatusItemController.h"
#include "app/ThemeFollower.h"
#include "linux/commands/CommandServer.h"
#include "platform/PlatformFamily.h"
#include "reminders/NotificationService.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"
#include "state/AppState.h"
#include "state/Ticker.h"

#include <QObject>

#include <optional>

namespace lumora {

/// The running program: owns the one state and the one ticker and hands them to everything that
/// shows them.
class LumobarApp : public QObject {
    Q_OBJECT

public:
    /// `platform` must outlive the program: ending it completes whatever is under way.
    explicit LumobarApp(const PlatformFamily& platform);

    /// Shows the status item, and begins work once a status area has it or has had its time:
    /// the first request loads the TLS library, and nobody should wait for the item meanwhile.
    void start();

Q_SIGNALS:
    /// Another process became the running program first.
    void superseded();

private:
    /// What exists once work has begun.
    struct Session {
        explicit Session(LumobarApp& app);

        AppState state;
        Ticker ticker;
        StatusItemController controller;
        RemoteActions remote;
        ThemeFollower themes;
        PanelController panel;
        SettingsController settings;
    };

    void begin();
    void followNetwork();
    void tidyLater();
    void refresh(const std::function<void(std::optional<QString>)>& done);
    void runCommand(MenuCommand command, const QByteArray& activationToken);
    void openSettings(const QByteArray& activationToken);
    void joinMeeting(const QByteArray& activationToken);
    CommandHandlers handlers();

    const PlatformFamily& m_platform;
    KeychainService m_keychain;
    LumoService m_service;
    NotificationService m_reminders;
    AppDelegate m_delegate;
    StatusAreaNotice m_notice;
    std::optional<Session> m_session;
    CommandServer m_commands;
    bool m_tidying = false; ///< memory will be given back in a moment
};

} // namespace lumora
