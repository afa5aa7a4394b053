#include "support/NotificationDaemon.h"

#include "support/Patience.h"

#include <QDBusConnectionInterface>
#include <QFile>
#include <QTest>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

constexpr QChar fieldEnd(0x1f);

// At the top left corner, where a test finds it, and for as long as a slow test needs.
const QString configuration = uR"([global]
    monitor = 0
    width = 300
    origin = top-left
    offset = 0x0
    idle_threshold = 0
    mouse_left_click = do_action, close_current
[urgency_normal]
    timeout = 0
[record]
    summary = "*"
    script = "%1"
)"_s;

const QString recorder = uR"(#!/bin/sh
printf '%s\037%s\037%s\037%s\n' \
    "$DUNST_APP_NAME" "$DUNST_SUMMARY" "$DUNST_BODY" "$DUNST_DESKTOP_ENTRY" >> "%1"
)"_s;

void write(const QString& path, const QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
        throw std::runtime_error("the notification server could not be set up");
}

} // namespace

NotificationDaemon::NotificationDaemon(PrivateBus& bus, const PrivateDisplay& display)
    : m_connection(bus.connect())
    , m_environment(QProcessEnvironment::systemEnvironment()) {
    write(m_folder.filePath(u"dunstrc"_s), configuration.arg(m_folder.filePath(u"record"_s)));
    write(m_folder.filePath(u"record"_s), recorder.arg(m_folder.filePath(u"shown"_s)));
    m_environment.remove(u"WAYLAND_DISPLAY"_s);
    m_environment.insert(u"DISPLAY"_s, QString::fromLatin1(display.name()));
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    m_environment.insert(u"HOME"_s, m_folder.path());
    m_daemon.setProcessEnvironment(m_environment);
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    // A test that is killed takes it along.
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

NotificationDaemon::~NotificationDaemon() {
    kill();
}

void NotificationDaemon::start() {
    m_daemon.start(u"dunst"_s, {u"-config"_s, m_folder.filePath(u"dunstrc"_s)});
    if (!m_daemon.waitForStarted(patience) ||
        !QTest::qWaitFor([this] { return isOnTheBus(); }, patience))
        throw std::runtime_error("dunst did not start");
}

void NotificationDaemon::kill() {
    m_daemon.kill();
    m_daemon.waitForFinished(patience);
    if (!QTest::qWaitFor([this] { return !isOnTheBus(); }, patience))
        throw std::runtime_error("dunst did not end");
}

QList<NotificationDaemon::Shown> NotificationDaemon::shown() const {
    QFile file(m_folder.filePath(u"shown"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<Shown> notifications;
    const auto lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QStringList fields = line.split(fieldEnd);
        notifications.append({fields.value(0), fields.value(1), fields.value(2), fields.value(3)});
    }
    return notifications;
}

void NotificationDaemon::click() const {
    const bool visible = QTest::qWaitFor(
        [this] {
            const QStringList wanted{u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"Dunst"_s};
            return !runTool(u"xdotool"_s, wanted).isEmpty();
        },
        patience);
    if (!visible)
        throw std::runtime_error("no notification can be seen");
    runTool(u"xdotool"_s, {u"mousemove"_s, u"40"_s, u"15"_s, u"click"_s, u"1"_s});
}

bool NotificationDaemon::isOnTheBus() const {
    return m_connection.interface()->isServiceRegistered(u"org.freedesktop.Notifications"_s);
}

QByteArray NotificationDaemon::runTool(const QString& program, const QStringList& arguments) const {
    QProcess tool;
    tool.setProcessEnvironment(m_environment);
    tool.start(program, arguments);
    tool.waitForFinished(patience);
    return tool.readAllStandardOutput();
}

} // namespace lumora::tests
