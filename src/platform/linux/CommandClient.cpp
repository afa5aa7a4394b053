#include "platform/linux/CommandClient.h"

#include "platform/linux/CommandAddress.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <chrono>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

// A refresh may take three tries of 30 seconds and the waits between them.
constexpr std::chrono::milliseconds answerLimit = 2min;

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
    return call(u"Status"_s, {}).map(firstText);
}

tl::expected<QString, CommandClient::Failure> CommandClient::refresh() {
    return call(u"Refresh"_s, {}).map(firstText);
}

tl::expected<void, CommandClient::Failure>
CommandClient::open(const QByteArray& activationToken) {
    return call(u"Open"_s, {QString::fromUtf8(activationToken)}).map([](const auto&) {});
}

tl::expected<void, CommandClient::Failure> CommandClient::quit() {
    return call(u"Quit"_s, {}).map([](const auto&) {});
}

tl::expected<QVariantList, CommandClient::Failure>
CommandClient::call(const QString& method, const QVariantList& arguments) {
    if (!isRunning())
        return tl::unexpected(Failure::NotRunning);
    auto message =
        QDBusMessage::createMethodCall(commandService, commandPath, commandInterface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    const auto reply = m_bus.call(message, QDBus::Block, int(answerLimit.count()));
    if (reply.type() != QDBusMessage::ReplyMessage)
        return tl::unexpected(Failure::NoAnswer);
    return reply.arguments();
}

} // namespace lumora
