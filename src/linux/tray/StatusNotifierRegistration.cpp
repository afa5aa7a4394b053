#include "linux/tray/StatusNotifierRegistration.h"

#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr int replyTimeout = 10'000; // milliseconds
constexpr int maximumRefusals = 5;

QString watcherName() {
    return u"org.kde.StatusNotifierWatcher"_s;
}

QDBusMessage watcherCall(const QString& interfaceName, const QString& method) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherName(), u"/StatusNotifierWatcher"_s, interfaceName, method);
    call.setAutoStartService(false);
    return call;
}

} // namespace

StatusNotifierRegistration::StatusNotifierRegistration(
    const QDBusConnection& bus, std::chrono::milliseconds retryDelay, QObject* parent)
    : QObject(parent)
    , m_bus(bus) {
    m_retry.setSingleShot(true);
    m_retry.setInterval(retryDelay);
    connect(&m_retry, &QTimer::timeout, this, &StatusNotifierRegistration::registerItem);
}

void StatusNotifierRegistration::start() {
    if (!m_bus.isConnected()) {
        setState(State::NoWatcher);
        return;
    }
    for (const QString& hostSignal :
         {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s}) {
        m_bus.connect(
            watcherName(), u"/StatusNotifierWatcher"_s, watcherName(), hostSignal, this,
            SLOT(onHostsChanged()));
    }
    m_watch.setConnection(m_bus);
    m_watch.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watch.addWatchedService(watcherName());
    connect(
        &m_watch, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString& /*name*/, const QString& /*oldOwner*/, const QString& newOwner) {
            onOwnerChanged(newOwner);
        });
    askForOwner();
}

void StatusNotifierRegistration::repeat() {
    if (m_registered)
        registerItem();
}

void StatusNotifierRegistration::askForOwner() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
        u"GetNameOwner"_s);
    call << watcherName();
    // An error says that there is none.
    ask(call, [this](const QDBusMessage& answer) {
        onOwnerChanged(
            answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString()
                                                        : QString());
    });
}

void StatusNotifierRegistration::onOwnerChanged(const QString& newOwner) {
    m_question.reset(); // it was to the watcher of before
    m_registered = false;
    m_refusals = 0;
    m_retry.stop();
    Q_EMIT watcherChanged(newOwner);
    if (newOwner.isEmpty()) {
        setState(State::NoWatcher);
    } else {
        setState(State::NotShown);
        registerItem();
    }
}

void StatusNotifierRegistration::onHostsChanged() {
    if (m_registered)
        askForHost();
    else if (m_refusals > 0)
        registerItem();
}

void StatusNotifierRegistration::registerItem() {
    m_retry.stop();
    QDBusMessage call = watcherCall(watcherName(), u"RegisterStatusNotifierItem"_s);
    call << m_bus.baseService();
    ask(call, [this](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ReplyMessage)
            onRegistered();
        else
            onRefused();
    });
}

void StatusNotifierRegistration::onRegistered() {
    m_registered = true;
    m_refusals = 0;
    askForHost();
}

// A watcher that has only just taken its name may not have its object in place yet.
void StatusNotifierRegistration::onRefused() {
    if (++m_refusals < maximumRefusals)
        m_retry.start();
}

void StatusNotifierRegistration::askForHost() {
    QDBusMessage call = watcherCall(u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call << watcherName() << u"IsStatusNotifierHostRegistered"_s;
    ask(call, [this](const QDBusMessage& answer) {
        // A watcher that cannot tell took the item all the same: believe in its host.
        const bool hosted = answer.type() != QDBusMessage::ReplyMessage ||
                            answer.arguments().value(0).value<QDBusVariant>().variant().toBool();
        setState(hosted ? State::Shown : State::NotShown);
    });
}

void StatusNotifierRegistration::ask(
    const QDBusMessage& call, const std::function<void(const QDBusMessage&)>& onAnswer) {
    m_question = std::make_unique<QDBusPendingCallWatcher>(m_bus.asyncCall(call, replyTimeout));
    connect(m_question.get(), &QDBusPendingCallWatcher::finished, this, [this, onAnswer] {
        // The question is the caller here and must outlive the call.
        auto* const answered = m_question.release();
        answered->deleteLater();
        onAnswer(answered->reply());
    });
}

void StatusNotifierRegistration::setState(State state) {
    if (m_state == state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
}

} // namespace lumora
