#pragma once

#include "support/BusProbe.h"
#include "support/PrivateBus.h"

#include <QHash>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace lumora::tests {

/// The built program as one user runs it, with folders, a session bus and a system bus of the
/// test's own. A program that still runs at the end must end cleanly when it is asked to.
class ProgramHarness {
public:
    /// How a process ended.
    struct Outcome {
        int exitCode = -1; ///< -1: it did not end in time, or crashed
        QByteArray out;
        QByteArray err;
    };

    ProgramHarness();
    ~ProgramHarness();
    ProgramHarness(const ProgramHarness&) = delete;
    ProgramHarness& operator=(const ProgramHarness&) = delete;

    PrivateBus& sessionBus() { return m_sessionBus; }

    PrivateBus& systemBus() { return m_systemBus; }

    /// The variable for all processes that are started from now on.
    void setVariable(const QString& name, const QString& value);

    /// Replaces the preferences, as an editor does.
    void writePreferences(const QHash<QString, QString>& preferences);

    /// Where the preferences file is, or would be.
    QString preferencesPath() const;

    /// The preferences file as it stands; empty when there is none.
    QByteArray preferencesFile() const;

    /// The files below the user's home, which holds all the XDG folders.
    QStringList filesAtHome() const;

    /// Starts the program that stays.
    void start(const QStringList& arguments = {});

    /// Runs the program with other arguments to its end.
    Outcome run(const QStringList& arguments);

    /// A process of the program with this user's environment, not yet started.
    std::unique_ptr<QProcess> makeProcess() const;

    /// The process that `start` made.
    QProcess& program() { return *m_program; }

    /// Waits for the end of the program that stays.
    Outcome waitForEnd();

    /// Asks the program that stays to end, if it still runs, and expects that it does.
    void end();

    /// Asks the program by D-Bus what it shows; empty while nobody answers.
    QJsonObject status();

    /// Waits until the status has all these members.
    testing::AssertionResult comesToShow(const QJsonObject& expected);

    /// A property of the status item; invalid when it is absent.
    QVariant itemProperty(const QString& name);

    /// The running program's name on the session bus.
    QString uniqueName();

    /// Waits for the end of a process and tells how it went.
    static Outcome finish(QProcess& process);

private:
    PrivateBus m_sessionBus;
    PrivateBus m_systemBus;
    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    QDBusConnection m_connection;
    BusProbe m_probe;
    std::unique_ptr<QProcess> m_program;
};

/// The processes that a process has started and that have not ended.
QList<qint64> childrenOf(qint64 process);

/// Whether a process runs. One that has ended and is only waiting to be buried does not.
bool isAlive(qint64 process);

} // namespace lumora::tests
