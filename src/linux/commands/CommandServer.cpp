#include "linux/commands/CommandServer.h"

#include "commandadaptor.h"
#include "linux/commands/DesktopApplication.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <utility>

namespace lumora {

CommandServer::CommandServer(CommandHandlers handlers, QDBusConnection bus)
    : m_bus(std::move(bus))
    , m_handlers(std::move(handlers)) {
    new CommandAdaptor(this);
    new DesktopApplication(
        {
            .open = m_handlers.open,
            .openSettings = m_handlers.openSettings,
            .refresh = [this] { m_handlers.refresh([](const auto&) {}); },
            .quit = m_handlers.quit,
        },
        this);
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

void CommandServer::announceLabel() {
    if (std::exchange(m_labelIsFollowed, false))
        Q_EMIT LabelChanged();
}

void CommandServer::announceDetails() {
    if (std::exchange(m_detailsAreFollowed, false))
        Q_EMIT DetailsChanged();
}

QString CommandServer::Status() {
    m_labelIsFollowed = true;
    m_detailsAreFollowed = true;
    return m_handlers.status();
}

/// What answers the call that is being handled, once; until then nothing does.
CommandHandlers::Done CommandServer::answerLater() {
    setDelayedReply(true);
    return [bus = m_bus, call = message()](const std::optional<QString>& failure) {
        bus.send(call.createReply({!failure, failure.value_or(QString())}));
    };
}

// The results of these are those of the reply that follows.
bool CommandServer::Refresh(QString&) {
    m_handlers.refresh(answerLater());
    return {};
}

bool CommandServer::Join(const QString& activationToken, QString&) {
    m_handlers.join(activationToken.toUtf8(), answerLater());
    return {};
}

bool CommandServer::Capture(const QString& text, QString&) {
    m_handlers.capture(text, answerLater());
    return {};
}

bool CommandServer::ToggleHabit(const QString& idOrName, QString&) {
    m_handlers.toggleHabit(idOrName, answerLater());
    return {};
}

bool CommandServer::FinishChore(const QString& idOrName, QString&) {
    m_handlers.finishChore(idOrName, answerLater());
    return {};
}

bool CommandServer::Agenda(QString& jsonOrMessage) {
    const auto agenda = m_handlers.agenda();
    jsonOrMessage = agenda ? *agenda : agenda.error();
    return agenda.has_value();
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
