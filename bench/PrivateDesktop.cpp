#include "PrivateDesktop.h"

#include <QDir>
#include <QFile>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

PrivateDesktop::PrivateDesktop(const QString& endpoint)
    : m_keyring(m_sessionBus)
    , m_watcher(m_sessionBus.connect()) {
    startXServer();
    writeSettings(endpoint);
    m_keyring.startUnlocked();
    const QStringList item{u"service"_s, u"com.lumora.app"_s, u"account"_s, u"briefingToken"_s};
    if (!m_keyring.secretTool(QStringList{u"store"_s, u"--label=token"_s} + item, "T"))
        throw std::runtime_error("the keyring took no token");
}

PrivateDesktop::~PrivateDesktop() {
    m_xServer.terminate();
    m_xServer.waitForFinished();
}

void PrivateDesktop::startXServer() {
    m_xServer.setStandardErrorFile(QProcess::nullDevice());
    m_xServer.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // It must not start afresh whenever its last program ends.
    m_xServer.start(
        u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-noreset"_s, u"-nolisten"_s, u"tcp"_s, u"-screen"_s,
                    u"0"_s, u"1280x800x24"_s});
    while (!m_xServer.canReadLine()) {
        if (!m_xServer.waitForReadyRead(10'000))
            throw std::runtime_error("Xvfb did not start");
    }
    m_display = u':' + QString::fromLatin1(m_xServer.readLine()).trimmed();
}

void PrivateDesktop::writeSettings(const QString& endpoint) const {
    const QString folder = m_home.filePath(u".config/lumora"_s);
    QFile file(folder + u"/lumora.conf"_s);
    if (!QDir().mkpath(folder) || !file.open(QFile::WriteOnly))
        throw std::runtime_error("no place for the settings");
    file.write("[General]\nendpointURL=" + endpoint.toUtf8() + "\n");
}

QProcessEnvironment PrivateDesktop::environment() const {
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, qEnvironmentVariable("PATH"));
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"HOME"_s, m_home.path());
    environment.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u".config"_s));
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.path());
    environment.insert(u"DISPLAY"_s, m_display);
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_sessionBus.address());
    environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, m_systemBus.address());
    // The fonts of a desktop, where whoever started this names them.
    if (const QString fonts = qEnvironmentVariable("FONTCONFIG_FILE"); !fonts.isEmpty())
        environment.insert(u"FONTCONFIG_FILE"_s, fonts);
    // Accessibility would look for a bus of its own.
    environment.insert(u"NO_AT_BRIDGE"_s, u"1"_s);
    return environment;
}

} // namespace lumora
