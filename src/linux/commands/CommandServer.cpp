#include "linux/commands/CommandServer.h"

#include "commandadaptor.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace lumora {

CommandServer::CommandServer(CommandHandlers handlers, QDBusConnection bus)
    : m_bus(std::move(bus))
    , m_handlers(std::move(handlers)) {
    new CommandAdaptor(this);
}

CommandServer::~CommandServer() {
    if (!m_bus.isConnected())
        return;
    m_bus.unregisterService(commandService);
    m_bus.unregisterObject(commandPath);
}

bool CommandServer::claim() {
    if (!m_bus.isConnected())
        return true;
    // In place before the name: whoever sees the name may call at once.
    m_bus.registerObject(commandPath, this);
    if (m_bus.registerService(commandService))
        return true;
    m_bus.unregisterObject(commandPath);
    return false;
}

QString CommandServer::Status() {
    return m_handlers.status();
}

// The results are those of the reply that follows.
bool CommandServer::Refresh(QString&) {
    setDelayedReply(true);
    m_handlers.refresh([bus = m_bus, call = message()](const std::optional<QString>& failure) {
        bus.send(call.createReply({!failure, failure.value_or(QString())}));
    });
    return {};
}

void CommandServer::Open(const QString& activationToken) {
    m_handlers.open(activationToken.toUtf8());
}

void CommandServer::Hide() {
    m_handlers.hide();
}

void CommandServer::Toggle(const QString& activationToken) {
    m_handlers.toggle(activationToken.toUtf8());
}

void CommandServer::OpenSettings(const QString& activationToken) {
    m_handlers.openSettings(activationToken.toUtf8());
}

void CommandServer::Quit() {
    m_handlers.quit();
}

} // namespace lumora
