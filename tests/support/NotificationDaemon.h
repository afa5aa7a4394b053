#pragma once

#include "support/PrivateBus.h"
#include "support/PrivateDisplay.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace lumora::tests {

/// A real notification server, dunst, on a private bus and a private display.
class NotificationDaemon {
public:
    /// What it showed, in its own words.
    struct Shown {
        QString app;
        QString summary;
        QString body;
        QString desktopEntry;

        bool operator==(const Shown&) const = default;
    };

    NotificationDaemon(PrivateBus& bus, const PrivateDisplay& display);
    ~NotificationDaemon();
    NotificationDaemon(const NotificationDaemon&) = delete;
    NotificationDaemon& operator=(const NotificationDaemon&) = delete;

    /// Starts it, and waits until it answers.
    void start();

    /// Ends it at once, as a crash would.
    void kill();

    /// Everything that it and the ones before it showed, in order.
    QList<Shown> shown() const;

    /// Clicks, with the pointer, on the topmost notification as soon as it can be seen.
    void click() const;

private:
    bool isOnTheBus() const;
    QByteArray runTool(const QString& program, const QStringList& arguments) const;

    QDBusConnection m_connection;
    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    QProcess m_daemon;
};

} // namespace lumora::tests
