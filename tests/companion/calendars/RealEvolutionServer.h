#pragma once

#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

namespace lumora::companion::tests {

/// The Evolution Data Server itself, on a bus and in a home of its own.
class RealEvolutionServer {
public:
    explicit RealEvolutionServer(lumora::tests::PrivateBus& bus)
        : m_connection(bus.connect())
        , m_environment(QProcessEnvironment::systemEnvironment()) {
        for (const char* const variable :
             {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
            const QString name = QString::fromLatin1(variable);
            m_environment.insert(name, m_home.path() + u'/' + name.toLower());
        }
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.path());
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
        m_environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
        m_environment.insert(QStringLiteral("GIO_USE_VFS"), QStringLiteral("local"));
        m_environment.remove(QStringLiteral("DISPLAY"));
        m_environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    }

    static bool isInstalled() { return QFile::exists(program(QStringLiteral("source-registry"))); }

    /// Puts `text` where the server keeps its own calendar; before the start.
    void setOwnCalendar(const QByteArray& text) const {
        write(QStringLiteral("xdg_data_home/evolution/calendar/system/calendar.ics"), text);
    }

    /// Adds a calendar in a file of the server's; before the start.
    void addCalendar(const QString& uid, const QByteArray& keyFile, const QByteArray& text) const {
        write(QStringLiteral("xdg_config_home/evolution/sources/%1.source").arg(uid), keyFile);
        write(QStringLiteral("xdg_data_home/evolution/calendar/%1/calendar.ics").arg(uid), text);
    }

    void start() {
        start(m_registry, QStringLiteral("source-registry"), QStringLiteral("Sources"));
        start(m_factory, QStringLiteral("calendar-factory"), QStringLiteral("Calendar"));
    }

    void kill() {
        for (QProcess* const process : {&m_factory, &m_registry}) {
            process->kill();
            process->waitForFinished(lumora::tests::patience);
        }
    }

    ~RealEvolutionServer() { kill(); }

private:
    static QString program(const QString& part) {
        return QStringLiteral("/usr/libexec/evolution-") + part;
    }

    void write(const QString& name, const QByteArray& bytes) const {
        const QString path = m_home.path() + u'/' + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("not written");
    }

    void start(QProcess& process, const QString& part, const QString& name) {
        process.setProcessEnvironment(m_environment);
        process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program(part), {});
        const QString prefix = QStringLiteral("org.gnome.evolution.dataserver.") + name;
        const bool isThere = process.waitForStarted(lumora::tests::patience) &&
                             QTest::qWaitFor(
                                 [&] {
                                     const QStringList names =
                                         m_connection.interface()->registeredServiceNames().value();
                                     return !names.filter(prefix).isEmpty();
                                 },
                                 lumora::tests::patience);
        if (!isThere)
            throw std::runtime_error("the Evolution Data Server did not start");
    }

    QTemporaryDir m_home;
    QDBusConnection m_connection;
    QProcessEnvironment m_environment;
    QProcess m_registry;
    QProcess m_factory;
};

} // namespace lumora::companion::tests
