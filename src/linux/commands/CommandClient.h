#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QString>
#include <QVariantList>

#include <tl/expected.hpp>

#include <chrono>
#include <optional>

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
    [[nodiscard]] bool isRunning() const;

    /// What the status area shows, as one JSON object.
    [[nodiscard]] tl::expected<QString, Failure> status();

    /// Has the program fetch the briefing, and waits for the end of that. The value is the fetch's
    /// failure message, which may be empty; absent on success.
    [[nodiscard]] tl::expected<std::optional<QString>, Failure> refresh();

    /// Has the program open its panel. The token lets it come to the front; empty: there is none.
    [[nodiscard]] tl::expected<void, Failure> open(const QByteArray& activationToken);

    /// Has the program close its panel.
    [[nodiscard]] tl::expected<void, Failure> hide();

    /// Has the program open its panel, or close it. The token is as above.
    [[nodiscard]] tl::expected<void, Failure> toggle(const QByteArray& activationToken);

    /// Has the program open its settings. The token is as above.
    [[nodiscard]] tl::expected<void, Failure> openSettings(const QByteArray& activationToken);

    /// Has the program end.
    [[nodiscard]] tl::expected<void, Failure> quit();

private:
    [[nodiscard]] tl::expected<void, Failure>
    command(const QString& method, const QVariantList& arguments = {});
    [[nodiscard]] tl::expected<QVariantList, Failure>
    call(const QString& method, const QVariantList& arguments, std::chrono::milliseconds limit);

    QDBusConnection m_bus;
};

} // namespace lumora
