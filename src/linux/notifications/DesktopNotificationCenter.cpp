#include "linux/notifications/DesktopNotificationCenter.h"

#include "platform/Completion.h"

#include <chrono>
#include <utility>

namespace lumora {

namespace {

using namespace std::chrono_literals;

// Long enough for a server that the bus has to start.
constexpr std::chrono::milliseconds authorizationPatience = 10s;

} // namespace

DesktopNotificationCenter::DesktopNotificationCenter(const QDBusConnection& bus, Clock& clock)
    : m_server(bus)
    , m_deliverer(m_server, clock)
    , m_scheduler(
          clock, [this](const NotificationRequest& request) { m_deliverer.deliver(request); }) {
    connect(&m_deliverer, &NotificationDeliverer::responded, this, &NotificationCenter::responded);
    connect(&m_server, &NotificationServer::appeared, this, [this] {
        if (std::exchange(m_refused, false))
            Q_EMIT authorizable();
    });
}

DesktopNotificationCenter::~DesktopNotificationCenter() {
    for (const Answer& answer : m_awaited)
        answer->complete(false);
}

QCoro::Task<bool> DesktopNotificationCenter::requestAuthorization() {
    const Answer granted = askForServer();
    co_return co_await granted->value();
}

DesktopNotificationCenter::Answer DesktopNotificationCenter::askForServer() {
    std::erase_if(m_awaited, [](const Answer& answer) { return answer->isComplete(); });
    auto answer = std::make_shared<Completion<bool>>();
    m_awaited.push_back(answer);
    m_server.askAbilities(authorizationPatience, [this, answer](const auto& abilities) {
        m_refused = !abilities;
        answer->complete(abilities.has_value());
    });
    return answer;
}

QCoro::Task<QStringList> DesktopNotificationCenter::pendingIdentifiers() {
    co_return m_scheduler.pendingIdentifiers();
}

void DesktopNotificationCenter::removePending(const QStringList& identifiers) {
    m_scheduler.remove(identifiers);
}

void DesktopNotificationCenter::removeAllPending() {
    m_scheduler.removeAll();
    m_deliverer.forgetUnsent();
}

void DesktopNotificationCenter::add(const NotificationRequest& request) {
    m_scheduler.add(request);
}

} // namespace lumora
