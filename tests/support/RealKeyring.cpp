#include "support/RealKeyring.h"

#include "support/Patience.h"
#include "support/WireSecret.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QTest>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

const QString keyringService = u"org.freedesktop.secrets"_s;
const QString keyringRoot = u"/org/freedesktop/secrets"_s;
const QString serviceInterface = u"org.freedesktop.Secret.Service"_s;
const QDBusObjectPath loginCollection(u"/org/freedesktop/secrets/collection/login"_s);
constexpr char password[] = "open sesame";

QDBusMessage mustCall(
    QDBusConnection connection, const QString& interface, const QString& method,
    const QVariantList& arguments) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(keyringService, keyringRoot, interface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = connection.call(call);
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw std::runtime_error(reply.errorMessage().toStdString());
    return reply;
}

} // namespace

RealKeyring::RealKeyring(PrivateBus& bus)
    : m_connection(bus.connect())
    , m_environment(QProcessEnvironment::systemEnvironment()) {
    qDBusRegisterMetaType<WireSecret>();
    for (const auto& [name, folder] :
         {std::pair(u"HOME"_s, u"home"_s),
          {u"XDG_DATA_HOME"_s, u"data"_s},
          {u"XDG_RUNTIME_DIR"_s, u"run"_s}}) {
        QDir().mkdir(
            m_home.filePath(folder), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        m_environment.insert(name, m_home.filePath(folder));
    }
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    // No prompt can reach the screen of the person who runs the tests.
    m_environment.remove(u"DISPLAY"_s);
    m_environment.remove(u"WAYLAND_DISPLAY"_s);
}

RealKeyring::~RealKeyring() {
    kill();
}

void RealKeyring::startUnlocked() {
    start({u"--unlock"_s}, password);
}

void RealKeyring::startLocked() {
    start({u"--start"_s}, {});
}

void RealKeyring::start(const QStringList& arguments, const QByteArray& input) {
    m_daemon.setProcessEnvironment(m_environment);
    // A test that is killed takes it along.
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_daemon.setStandardOutputFile(QProcess::nullDevice());
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(
        u"gnome-keyring-daemon"_s,
        arguments + QStringList{u"--foreground"_s, u"--components=secrets"_s});
    m_daemon.write(input);
    m_daemon.closeWriteChannel();
    const bool isThere =
        m_daemon.waitForStarted(patience) &&
        QTest::qWaitFor(
            [this] {
                return m_connection.interface()->isServiceRegistered(keyringService).value();
            },
            patience);
    if (!isThere)
        throw std::runtime_error("gnome-keyring-daemon did not start");
}

void RealKeyring::kill() {
    m_daemon.kill();
    m_daemon.waitForFinished(patience);
}

void RealKeyring::lock() {
    const QList<QDBusObjectPath> objects{loginCollection};
    mustCall(m_connection, serviceInterface, u"Lock"_s, {QVariant::fromValue(objects)});
}

void RealKeyring::unlock() {
    const QDBusMessage opened = mustCall(
        m_connection, serviceInterface, u"OpenSession"_s,
        {u"plain"_s, QVariant::fromValue(QDBusVariant(QString()))});
    const auto session = opened.arguments().at(1).value<QDBusObjectPath>();
    const WireSecret master{session, {}, password, u"text/plain"_s};
    mustCall(
        m_connection, u"org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"_s,
        u"UnlockWithMasterPassword"_s,
        {QVariant::fromValue(loginCollection), QVariant::fromValue(master)});
}

bool RealKeyring::secretTool(const QStringList& arguments, const QByteArray& input) {
    QProcess tool;
    tool.setProcessEnvironment(m_environment);
    tool.start(u"secret-tool"_s, arguments);
    tool.write(input);
    tool.closeWriteChannel();
    const bool ended = tool.waitForFinished(patience);
    m_output = tool.readAllStandardOutput();
    return ended && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0;
}

bool storeToken(RealKeyring& keyring, const QByteArray& token) {
    return keyring.secretTool(
        {u"store"_s, u"--label=Lumora briefing token"_s, u"service"_s, u"com.lumora.app"_s,
         u"account"_s, u"briefingToken"_s},
        token);
}

} // namespace lumora::tests
