#include "PeerDesktop.h"

#include "Expectations.h"
#include "linux/appearance/PanelToneMonitor.h"
#include "linux/appearance/PortalAppearance.h"
#include "linux/commands/CommandServer.h"
#include "linux/notifications/NotificationServer.h"
#include "linux/secrets/SecretServiceMonitor.h"
#include "linux/session/LogindWakeMonitor.h"
#include "linux/session/NetworkManagerMonitor.h"
#include "linux/tray/DBusMenu.h"
#include "linux/tray/StatusNotifierItem.h"
#include "platform/memory/MemoryPreferences.h"

#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

const QString peerName = u"lumora-fuzz"_s;

QDBusConnection noBus() {
    return QDBusConnection(u"none"_s);
}

std::unique_ptr<QObject> applicationIfNone() {
    if (QCoreApplication::instance())
        return nullptr;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "lumora-fuzz";
    static char* arguments[] = {name, nullptr};
    return std::make_unique<QGuiApplication>(count, arguments);
}

CommandHandlers handlers() {
    return {
        .status = [] { return u"{}"_s; },
        .refresh = [](auto done) { done(std::nullopt); },
        .join = [](const QByteArray&, auto done) { done(std::nullopt); },
        .capture = [](const QString&, auto done) { done(std::nullopt); },
        .toggleHabit = [](const QString&, auto done) { done(std::nullopt); },
        .finishChore = [](const QString&, auto done) { done(std::nullopt); },
        .agenda = [] { return u"{}"_s; },
        .open = [](const QByteArray&) {},
        .hide = [] {},
        .toggle = [](const QByteArray&) {},
        .openSettings = [](const QByteArray&) {},
        .quit = [] {},
    };
}

QList<StatusMenuRow> someRows() {
    using Kind = StatusMenuRow::Kind;
    return {
        {Kind::Action, MenuCommand::Open, u"Open"_s},
        {Kind::Separator, {}, {}},
        {Kind::Text, {}, u"Stand_up"_s},
        {Kind::Action, MenuCommand::Quit, u"Quit"_s},
    };
}

/// What hears of signals, none of it on a bus. Each expects what it tells of to be so.
class Listeners final : public QDBusVirtualObject {
public:
    explicit Listeners(QObject* parent)
        : QDBusVirtualObject(parent)
        , m_tone(noBus(), u"XFCE"_s, m_portal, m_preferences, {}) {
        connect(&m_wake, &WakeMonitor::woke, this, [this] {
            const QVariant first = m_message.arguments().value(0);
            expect(first.typeId() == QMetaType::Bool && !first.toBool(), "an end of sleep");
        });
        connect(&m_network, &NetworkMonitor::cameUp, this, [this] {
            const QVariant first = m_message.arguments().value(0);
            expect(first.typeId() == QMetaType::UInt && first.toUInt() >= 60, "a network");
        });
        connect(&m_portal, &DesktopAppearance::changed, this, [this] {
            const auto& wishes = m_portal.wishes();
            expect(!wishes.animations.value_or(false), "no wish for motion");
            if (const auto& accent = wishes.accent)
                for (const double part : {accent->red, accent->green, accent->blue})
                    expect(part >= 0 && part <= 1, "a part of a colour");
        });
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const QByteArray slot = message.member().toLatin1();
        const QList<QObject*> all{&m_wake,   &m_network, &m_notifications,
                                  &m_portal, &m_tone,    &m_secrets};
        m_message = message;
        for (QObject* object : all)
            if (object->metaObject()->indexOfSlot(slot + "(QDBusMessage)") >= 0)
                QMetaObject::invokeMethod(
                    object, slot.constData(), Qt::DirectConnection, Q_ARG(QDBusMessage, message));
        return connection.send(message.createReply());
    }

private:
    LogindWakeMonitor m_wake{&noBus};
    NetworkManagerMonitor m_network{&noBus};
    NotificationServer m_notifications{noBus()};
    PortalAppearance m_portal{noBus()};
    MemoryPreferences m_preferences;
    PanelToneMonitor m_tone;
    SecretServiceMonitor m_secrets{noBus()};
    QDBusMessage m_message; ///< the one that is heard of
};

/// Everything of the program that answers calls or hears of signals, on a connection.
class Objects final : public QObject {
public:
    explicit Objects(const QDBusConnection& connection)
        : m_connection(connection)
        , m_menu(m_connection)
        , m_item(m_connection)
        , m_commands(handlers(), m_connection)
        , m_listeners(nullptr) {
        m_menu.setRows(someRows());
        connect(&m_menu, &DBusMenu::chosen, this, [](MenuCommand command) {
            expect(
                command == MenuCommand::Open || command == MenuCommand::Quit, "a row of the menu");
        });
        m_connection.registerObject(commandPath, &m_commands);
        m_connection.registerVirtualObject(signalsPath, &m_listeners);
    }

private:
    QDBusConnection m_connection;
    DBusMenu m_menu;
    StatusNotifierItem m_item;
    CommandServer m_commands;
    Listeners m_listeners;
};

} // namespace

/// The end of the connection at which the program's objects are.
class PeerDesktop::Program {
public:
    Program()
        : m_server(u"unix:tmpdir="_s + QDir::tempPath()) {
        QObject::connect(
            &m_server, &QDBusServer::newConnection, &m_waiting,
            [this](const QDBusConnection& connection) {
                m_objects = std::make_unique<Objects>(connection);
                m_waiting.quit();
            });
    }

    QString address() const { return m_server.address(); }

    void waitForPeer() {
        if (!m_objects)
            m_waiting.exec();
    }

private:
    QDBusServer m_server;
    QEventLoop m_waiting;
    std::unique_ptr<Objects> m_objects;
};

PeerDesktop::PeerDesktop()
    : m_application(applicationIfNone())
    , m_program(std::make_unique<Program>())
    , m_connection(QDBusConnection::connectToPeer(m_program->address(), peerName)) {
    expect(m_connection.isConnected(), "a connection");
    m_program->waitForPeer();
}

PeerDesktop& PeerDesktop::theOne() {
    // Never destroyed: the bus library's own objects would be gone before.
    static PeerDesktop* const desktop = new PeerDesktop;
    return *desktop;
}

QDBusMessage PeerDesktop::ask(const QDBusMessage& call) {
    constexpr int patience = 5000; // milliseconds
    return m_connection.call(call, QDBus::BlockWithGui, patience);
}

} // namespace lumora::fuzz
