#include "linux/tray/StatusNotifierSession.h"

namespace lumora {

StatusNotifierSession::Closer::~Closer() {
    if (!name.isEmpty())
        QDBusConnection::disconnectFromBus(name);
}

StatusNotifierSession::StatusNotifierSession(
    const QDBusConnection& bus, Connection use, QObject* parent)
    : QObject(parent)
    , m_closer{use == Connection::Own ? bus.name() : QString()}
    , m_item(bus)
    , m_menu(bus)
    , m_registration(bus) {
    connect(&m_item, &StatusNotifierItem::activated, this, &StatusNotifierSession::activated);
    connect(&m_menu, &DBusMenu::chosen, this, [this](MenuCommand command) {
        Q_EMIT commandChosen(command, m_item.takeActivationToken());
    });
    connect(
        &m_registration, &StatusNotifierRegistration::stateChanged, this,
        &StatusNotifierSession::stateChanged);
    connect(
        &m_registration, &StatusNotifierRegistration::watcherChanged, this,
        &StatusNotifierSession::watcherChanged);
}

void StatusNotifierSession::setContent(const StatusItemContent& content) {
    m_item.setContent(content);
    m_menu.setRows(content.menu);
}

void StatusNotifierSession::setIconName(const QString& name) {
    m_item.setIconName(name);
}

void StatusNotifierSession::setPixmaps(const QList<IconPixmap>& pixmaps) {
    m_item.setPixmaps(pixmaps);
}

void StatusNotifierSession::insist(bool wholly) {
    m_item.announcePixmaps();
    if (wholly)
        m_registration.repeat();
}

void StatusNotifierSession::start() {
    m_registration.start();
}

} // namespace lumora
