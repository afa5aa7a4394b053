#pragma once

#include "support/PrivateBus.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace lumora::tests {

/// A real gnome-keyring on a private bus, with folders of its own: the keyrings of the person who
/// runs the tests are never touched. Its data outlives a restart of the daemon.
class RealKeyring {
public:
    explicit RealKeyring(PrivateBus& bus);
    ~RealKeyring();
    RealKeyring(const RealKeyring&) = delete;
    RealKeyring& operator=(const RealKeyring&) = delete;

    /// Starts the daemon with the login collection, made when there is none, unlocked.
    void startUnlocked();

    /// Starts the daemon as at a login without password: nothing is unlocked.
    void startLocked();

    /// Ends the daemon at once.
    void kill();

    /// Locks or unlocks the login collection; no prompt is involved.
    void lock();
    void unlock();

    /// Runs secret-tool with the arguments and the standard input; true when it succeeded.
    bool secretTool(const QStringList& arguments, const QByteArray& input = {});

    /// What secret-tool wrote the last time.
    QByteArray output() const { return m_output; }

private:
    void start(const QStringList& arguments, const QByteArray& input);

    QDBusConnection m_connection;
    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    QProcess m_daemon;
    QByteArray m_output;
};

/// Puts the token where the program looks for it, the way the documentation tells people to.
bool storeToken(RealKeyring& keyring, const QByteArray& token);

} // namespace lumora::tests
