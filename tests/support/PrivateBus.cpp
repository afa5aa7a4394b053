#include "support/PrivateBus.h"

#include "support/Patience.h"

#include <QTemporaryFile>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

// No service directories of the machine's.
constexpr char busConfiguration[] = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  %1
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus(const QString& services) {
    QTemporaryFile configuration;
    if (!configuration.open())
        throw std::runtime_error("no temporary file for the bus configuration");
    const QString folder =
        services.isEmpty() ? QString() : u"<servicedir>%1</servicedir>"_s.arg(services);
    configuration.write(QString::fromLatin1(busConfiguration).arg(folder).toUtf8());
    configuration.flush();

    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // A test that is killed takes it along.
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_daemon.start(
        u"dbus-daemon"_s, {u"--config-file=%1"_s.arg(configuration.fileName()), u"--nofork"_s,
                           u"--print-address"_s, u"--nopidfile"_s});
    if (!m_daemon.waitForStarted(patience) || !m_daemon.waitForReadyRead(patience))
        throw std::runtime_error("dbus-daemon did not start");
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    for (const QString& name : m_connectionNames)
        QDBusConnection::disconnectFromBus(name);
    kill();
}

QDBusConnection PrivateBus::connect() {
    static int serial = 0;
    m_connectionNames += u"private-bus-%1"_s.arg(++serial);
    return QDBusConnection::connectToBus(m_address, m_connectionNames.last());
}

void PrivateBus::kill() {
    m_daemon.kill();
    m_daemon.waitForFinished(patience);
}

} // namespace lumora::tests
