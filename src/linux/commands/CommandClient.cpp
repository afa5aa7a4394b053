#include "linux/commands/CommandClient.h"

#include "linux/commands/CommandServer.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds answerLimit = 10s;

// A refresh may take three tries of 30 seconds and the waits between them.
constexpr std::chrono::milliseconds refreshLimit = 2min;

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

tl::expected<std::optional<QString>, CommandClient::Failure> CommandClient::refresh() {
    return call(u"Refresh"_s, {}, refreshLimit).map([](const QVariantList& values) {
        const bool succeeded = values.value(0).toBool();
        return succeeded ? std::nullopt : std::optional(values.value(1).toString());
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
