#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace lumora {

/// Keeps the connection's status item registered with the desktop's `StatusNotifierWatcher`,
/// whenever one appears. It registers the connection's unique name: some hosts look up a
/// well-known name too early and lose the item.
class StatusNotifierRegistration final : public QObject {
    Q_OBJECT

public:
    enum class State {
        Looking,   ///< not known yet
        NoWatcher, ///< nobody keeps status items
        NotShown,  ///< there is a watcher, but it took the item not yet or has nobody to show it
        Shown,
    };

    /// `retryDelay` is the pause after a watcher refused the item.
    explicit StatusNotifierRegistration(
        const QDBusConnection& bus, std::chrono::milliseconds retryDelay = std::chrono::seconds(2),
        QObject* parent = nullptr);

    /// Gives the item to the watcher that has it already.
    void repeat();

    /// Begins to look for a watcher; the item's objects have to be on the bus by then.
    void start();

    State state() const { return m_state; }

Q_SIGNALS:
    void stateChanged();

    /// The watcher is another program from now on, with the unique name `owner`; empty: there is
    /// none. It has not been given the item yet.
    void watcherChanged(const QString& owner);

private Q_SLOTS:
    void onHostsChanged();

private:
    void askForOwner();
    void onOwnerChanged(const QString& newOwner);
    void registerItem();
    void onRegistered();
    void onRefused();
    void askForHost();

    /// Sends `call`; `onAnswer` gets the answer unless something newer has happened meanwhile.
    void ask(const QDBusMessage& call, const std::function<void(const QDBusMessage&)>& onAnswer);
    void setState(State state);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watch;
    QTimer m_retry;
    State m_state = State::Looking;
    bool m_registered = false;
    int m_refusals = 0;                                  ///< in a row, by the present watcher
    std::unique_ptr<QDBusPendingCallWatcher> m_question; ///< whose answer is awaited
};

} // namespace lumora
