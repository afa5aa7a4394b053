#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QString>
#include <QVariantList>

#include <tl/expected.hpp>

namespace lumora {

/// Asks the running program. Every call waits for the answer: this is for short-lived processes.
class CommandClient {
public:
    enum class Failure {
        NotRunning, ///< nobody owns the program's name, or there is no session bus
        NoAnswer,   ///< the running program did not answer
    };

    explicit CommandClient(QDBusConnection bus = QDBusConnection::sessionBus());

    /// Whether a process owns the program's name.
    bool isRunning() const;

    tl::expected<QString, Failure> status();

    /// The value is the failure's message, empty on success.
    tl::expected<QString, Failure> refresh();

    tl::expected<void, Failure> open(const QByteArray& activationToken);
    tl::expected<void, Failure> quit();

private:
    tl::expected<QVariantList, Failure> call(const QString& method, const QVariantList& arguments);

    QDBusConnection m_bus;
};

} // namespace lumora
