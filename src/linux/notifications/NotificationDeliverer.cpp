#include "linux/notifications/NotificationDeliverer.h"

#include "linux/notifications/DeliveryPlan.h"
#include "linux/notifications/NotificationMessage.h"
#include "platform/Clock.h"

#include <algorithm>

namespace lumora {

namespace {

// A server that is slow, or still being started, gets as long as the notification is worth showing.
constexpr std::chrono::milliseconds patience = longestDeliveryDelay;

constexpr std::chrono::seconds retryDelay{30};

// A notification that no server gets shown, perhaps because each one crashes on it.
constexpr int maximumAttempts = 5;

} // namespace

NotificationDeliverer::NotificationDeliverer(NotificationServer& server, Clock& clock)
    : m_server(server)
    , m_clock(clock) {
    connect(&m_server, &NotificationServer::changed, this, &NotificationDeliverer::onServerChanged);
    connect(&m_server, &NotificationServer::appeared, this, &NotificationDeliverer::sendAll);
    connect(
        &m_server, &NotificationServer::actionInvoked, this, &NotificationDeliverer::onReaction);
    connect(
        &m_server, &NotificationServer::activationToken, this,
        [this](const ShownNotification& notification, const QByteArray& token) {
            if (const auto known = m_standing.find(notification); known != m_standing.end())
                known->second.activationToken = token;
        });
    connect(
        &m_server, &NotificationServer::closed, this,
        [this](const ShownNotification& notification) { m_standing.erase(notification); });
}

NotificationDeliverer::~NotificationDeliverer() = default;

void NotificationDeliverer::deliver(const NotificationRequest& request) {
    const auto same = unsentOf(request.identifier);
    if (same == m_unsent.end())
        m_unsent.push_back({request});
    else if (!same->underWay)
        same->request = request;
    sendAll();
}

void NotificationDeliverer::forgetUnsent() {
    std::erase_if(m_unsent, [](const Unsent& unsent) { return !unsent.underWay; });
}

std::vector<NotificationDeliverer::Unsent>::iterator
NotificationDeliverer::unsentOf(const QString& identifier) {
    return std::ranges::find_if(m_unsent, [&identifier](const Unsent& unsent) {
        return unsent.request.identifier == identifier;
    });
}

void NotificationDeliverer::sendAll() {
    dropHopeless();
    if (m_asking || m_unsent.empty())
        return;
    m_asking = true;
    m_server.askAbilities(patience, [this, generation = m_generation](const auto& abilities) {
        if (generation != m_generation)
            return; // whoever came since has been asked as well
        m_asking = false;
        dropHopeless();
        if (!abilities)
            return tryAgainLater();
        for (Unsent& unsent : m_unsent)
            send(unsent, *abilities);
    });
}

void NotificationDeliverer::send(Unsent& unsent, const NotificationAbilities& abilities) {
    if (unsent.underWay)
        return;
    unsent.underWay = true;
    ++unsent.attempts;
    const NotificationRequest request = unsent.request;
    const auto arguments =
        notifyArguments(request, abilities, standingId(request.identifier), m_clock.now());
    const auto onAnswer = [this, request, generation = m_generation](const auto& shown) {
        if (generation != m_generation)
            return; // its successor is asked instead
        if (shown)
            return onSent(request, *shown);
        unsentOf(request.identifier)->underWay = false;
        tryAgainLater();
    };
    m_server.notify(abilities.server, arguments, patience, onAnswer);
}

void NotificationDeliverer::onSent(
    const NotificationRequest& request, const ShownNotification& shown) {
    m_unsent.erase(unsentOf(request.identifier));
    // A server may give a new id to what replaces an older notification.
    std::erase_if(m_standing, [&request](const auto& entry) {
        return entry.second.identifier == request.identifier;
    });
    m_standing[shown] = {request.identifier, request.userInfo, {}};
}

// The next server that comes is asked at once. One that has just taken its name may not be ready
// yet, though, and nothing tells when it is.
void NotificationDeliverer::tryAgainLater() {
    if (!m_unsent.empty())
        m_retry = m_clock.at(m_clock.now() + retryDelay, [this] { sendAll(); });
}

void NotificationDeliverer::dropHopeless() {
    const Instant now = m_clock.now();
    std::erase_if(m_unsent, [now](const Unsent& unsent) {
        return !unsent.underWay &&
               (isTooLate(unsent.request.fireTime, now) || unsent.attempts == maximumAttempts);
    });
}

uint NotificationDeliverer::standingId(const QString& identifier) const {
    const auto standing = std::ranges::find_if(m_standing, [&identifier](const auto& entry) {
        return entry.second.identifier == identifier;
    });
    return standing == m_standing.end() ? 0 : standing->first.id;
}

void NotificationDeliverer::onServerChanged() {
    ++m_generation;
    m_asking = false;
    m_standing.clear();
    for (Unsent& unsent : m_unsent)
        unsent.underWay = false;
}

void NotificationDeliverer::onReaction(const ShownNotification& notification) {
    // Taken out first: ids are used once, also when the server says so twice.
    const auto standing = m_standing.extract(notification);
    if (!standing.empty())
        Q_EMIT responded(standing.mapped().userInfo, standing.mapped().activationToken);
}

} // namespace lumora
