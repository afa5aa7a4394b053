#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace lumora {

/// The name of the program with process id `process`, as the kernel has it: its first fifteen
/// characters. Empty when it cannot be known.
[[nodiscard]] QString processName(uint process);

/// Finds out which program keeps the status items, without waiting for the answer.
class StatusAreaHost final : public QObject {
    Q_OBJECT

public:
    using NameOf = std::function<QString(uint process)>;

    /// `nameOf` tells a process's name.
    explicit StatusAreaHost(
        const QDBusConnection& bus, NameOf nameOf = &lumora::processName,
        QObject* parent = nullptr);

    /// Looks at the connection with the unique name `owner`; empty: there is nobody.
    void look(const QString& owner);

    /// The program's name; empty until it is known.
    const QString& process() const { return m_process; }

Q_SIGNALS:
    void changed();

private:
    void setProcess(const QString& process);

    QDBusConnection m_bus;
    NameOf m_nameOf;
    QString m_process;
    std::unique_ptr<QDBusPendingCallWatcher> m_question;
};

} // namespace lumora
