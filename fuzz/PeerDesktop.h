#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <memory>

namespace lumora::fuzz {

/// Somebody on the other side of a D-Bus connection that leads to the program's own objects, over a
/// socket and without a bus: what is sent arrives as it does from the desktop, and nothing else
/// does. Makes an application object if there is none.
class PeerDesktop {
public:
    /// There can be one, which stays until the process ends.
    static PeerDesktop& theOne();

    Q_DISABLE_COPY_MOVE(PeerDesktop)

    /// Sends `call` to the object that it names, and waits for the answer.
    [[nodiscard]] QDBusMessage ask(const QDBusMessage& call);

private:
    class Program;

    PeerDesktop();

    std::unique_ptr<QObject> m_application; ///< null: there was one
    std::unique_ptr<Program> m_program;
    QDBusConnection m_connection;
};

/// The path at which signals are sent: the message's member is the slot that takes it, in whichever
/// of the program's objects has it.
inline const QString signalsPath = QStringLiteral("/signals");

} // namespace lumora::fuzz
