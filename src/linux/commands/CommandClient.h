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

    /// What came of something that takes its time: the message says why it failed, and may be
    /// empty; absent on success. Or it could not be asked for.
    using Outcome = tl::expected<std::optional<QString>, Failure>;

    explicit CommandClient(QDBusConnection bus = QDBusConnection::sessionBus());

    /// Whether a process owns the program's name.
    [[nodiscard]] bool isRunning() const;

    /// What the status area shows, as one JSON object.
    [[nodiscard]] tl::expected<QString, Failure> status();

    /// Has the program fetch the briefing, and waits for the end of that, here and below.
    [[nodiscard]] Outcome refresh();

    /// Has the program open the link of the meeting that is on or comes next. The token lets what
    /// is opened come to the front; empty: there is none.
    [[nodiscard]] Outcome join(const QByteArray& activationToken);

    /// Has the program put `text` into the inbox.
    [[nodiscard]] Outcome capture(const QString& text);

    /// Has the program toggle a habit, or report a chore as done, by its id or its name.
    [[nodiscard]] Outcome toggleHabit(const QString& idOrName);
    [[nodiscard]] Outcome finishChore(const QString& idOrName);

    /// What is left of the day, as one JSON object, or a message that says why there is nothing.
    [[nodiscard]] tl::expected<tl::expected<QString, QString>, Failure> agenda();

    /// Has the program open its panel. The token is as above, and below.
    [[nodiscard]] tl::expected<void, Failure> open(const QByteArray& activationToken);

    /// Has the program close its panel.
    [[nodiscard]] tl::expected<void, Failure> hide();

    /// Has the program open its panel, or close it.
    [[nodiscard]] tl::expected<void, Failure> toggle(const QByteArray& activationToken);

    /// Has the program open its settings.
    [[nodiscard]] tl::expected<void, Failure> openSettings(const QByteArray& activationToken);

    /// Has the program end.
    [[nodiscard]] tl::expected<void, Failure> quit();

private:
    [[nodiscard]] Outcome outcome(const QString& method, const QVariantList& arguments = {});
    [[nodiscard]] tl::expected<void, Failure>
    command(const QString& method, const QVariantList& arguments = {});
    [[nodiscard]] tl::expected<QVariantList, Failure>
    call(const QString& method, const QVariantList& arguments, std::chrono::milliseconds limit);

    QDBusConnection m_bus;
};

} // namespace lumora
