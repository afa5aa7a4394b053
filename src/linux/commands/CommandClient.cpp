#include "linux/commands/CommandClient.h"

#include "linux/commands/CommandServer.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds answerLimit = 10s;

// A request may take three tries of 30 seconds and the waits between them, and an action ends with
// a second one.
constexpr std::chrono::milliseconds outcomeLimit = 4min;

QString firstText(const QVariantList& values) {
    return values.value(0).toString();
}

} // namespace

CommandClient::CommandClient(QDBusConnection bus)
    : m_bus(std::move(bus)) {}

bool CommandClient::isRunning() const {
    return m_bus.isConnected() && m_bus.interface()->isServiceRegistered(commandService);
}

tl::expected<QString, CommandClient::Failure> CommandClient::status() {
    return call(u"Status"_s, {}, answerLimit).map(firstText);
}

CommandClient::Outcome CommandClient::refresh() {
    return outcome(u"Refresh"_s);
}

CommandClient::Outcome CommandClient::join(const QByteArray& activationToken) {
    return outcome(u"Join"_s, {QString::fromUtf8(activationToken)});
}

CommandClient::Outcome CommandClient::capture(const QString& text) {
    return outcome(u"Capture"_s, {text});
}

CommandClient::Outcome CommandClient::toggleHabit(const QString& idOrName) {
    return outcome(u"ToggleHabit"_s, {idOrName});
}

CommandClient::Outcome CommandClient::finishChore(const QString& idOrName) {
    return outcome(u"FinishChore"_s, {idOrName});
}

tl::expected<tl::expected<QString, QString>, CommandClient::Failure> CommandClient::agenda() {
    using Agenda = tl::expected<QString, QString>;
    return call(u"Agenda"_s, {}, answerLimit).map([](const QVariantList& values) -> Agenda {
        QString text = values.value(1).toString();
        if (values.value(0).toBool())
            return text;
        return tl::unexpected(text);
    });
}

tl::expected<void, CommandClient::Failure> CommandClient::open(const QByteArray& activationToken) {
    return command(u"Open"_s, {QString::fromUtf8(activationToken)});
}

tl::expected<void, CommandClient::Failure> CommandClient::hide() {
    return command(u"Hide"_s);
}

tl::expected<void, CommandClient::Failure>
CommandClient::toggle(const QByteArray& activationToken) {
    return command(u"Toggle"_s, {QString::fromUtf8(activationToken)});
}

tl::expected<void, CommandClient::Failure>
CommandClient::openSettings(const QByteArray& activationToken) {
    return command(u"OpenSettings"_s, {QString::fromUtf8(activationToken)});
}

tl::expected<void, CommandClient::Failure> CommandClient::quit() {
    return command(u"Quit"_s);
}

CommandClient::Outcome
CommandClient::outcome(const QString& method, const QVariantList& arguments) {
    return call(method, arguments, outcomeLimit).map([](const QVariantList& values) {
        const bool succeeded = values.value(0).toBool();
        return succeeded ? std::nullopt : std::optional(values.value(1).toString());
    });
}

tl::expected<void, CommandClient::Failure>
CommandClient::command(const QString& method, const QVariantList& arguments) {
    return call(method, arguments, answerLimit).map([](const auto&) {});
}

tl::expected<QVariantList, CommandClient::Failure> CommandClient::call(
    const QString& method, const QVariantList& arguments, std::chrono::milliseconds limit) {
    if (!isRunning())
        return tl::unexpected(Failure::NotRunning);
    auto message =
        QDBusMessage::createMethodCall(commandService, commandPath, commandInterface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    const auto reply = m_bus.call(message, QDBus::Block, int(limit.count()));
    if (reply.type() != QDBusMessage::ReplyMessage)
        return tl::unexpected(Failure::NoAnswer);
    return reply.arguments();
}

} // namespace lumora
