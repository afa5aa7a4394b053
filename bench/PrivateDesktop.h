#pragma once

#include "support/FakeWatcher.h"
#include "support/PrivateBus.h"
#include "support/RealKeyring.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace lumora {

/// What a program finds after a login, and nobody else uses: an X server, both message buses, a
/// keeper of status items, a keyring with the token, and a home with Lumora's settings.
class PrivateDesktop {
public:
    /// `endpoint` is the address in Lumora's settings.
    explicit PrivateDesktop(const QString& endpoint);
    ~PrivateDesktop();
    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;

    /// What to start a program with so that it lives here. It says nothing of the kind of desktop.
    QProcessEnvironment environment() const;

    /// The status items that were registered so far, in order.
    QStringList items() const { return m_watcher.registered(); }

    /// The X server's name, as in DISPLAY.
    QString display() const { return m_display; }

    /// A new connection to the session bus.
    QDBusConnection connectToSession() { return m_sessionBus.connect(); }

private:
    void startXServer();
    void writeSettings(const QString& endpoint) const;

    QTemporaryDir m_home;
    QProcess m_xServer;
    QString m_display;
    tests::PrivateBus m_systemBus;
    tests::PrivateBus m_sessionBus;
    tests::RealKeyring m_keyring;
    tests::FakeWatcher m_watcher;
};

} // namespace lumora
