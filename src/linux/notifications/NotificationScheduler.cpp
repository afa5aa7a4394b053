#include "linux/notifications/NotificationScheduler.h"

#include "linux/notifications/DeliveryPlan.h"

#include <algorithm>

namespace lumora {

namespace {

std::optional<Instant> earliest(const std::vector<NotificationRequest>& requests) {
    const auto first = std::ranges::min_element(requests, {}, &NotificationRequest::fireTime);
    return first == requests.end() ? std::nullopt : std::optional(first->fireTime);
}

} // namespace

NotificationScheduler::NotificationScheduler(Clock& clock, Deliver deliver)
    : m_clock(clock)
    , m_deliver(std::move(deliver)) {}

void NotificationScheduler::add(const NotificationRequest& request) {
    const auto same =
        std::ranges::find(m_pending, request.identifier, &NotificationRequest::identifier);
    if (same == m_pending.end())
        m_pending.push_back(request);
    else
        *same = request;
    sleepUntil(earliest(m_pending));
}

void NotificationScheduler::remove(const QStringList& identifiers) {
    std::erase_if(m_pending, [&identifiers](const NotificationRequest& request) {
        return identifiers.contains(request.identifier);
    });
    sleepUntil(earliest(m_pending));
}

void NotificationScheduler::removeAll() {
    m_pending.clear();
    m_alarm.reset();
}

QStringList NotificationScheduler::pendingIdentifiers() {
    handOver();
    QStringList identifiers;
    for (const NotificationRequest& request : m_pending)
        identifiers += request.identifier;
    return identifiers;
}

void NotificationScheduler::handOver() {
    DeliveryPlan plan = planDelivery(m_pending, m_clock.now());
    m_pending = std::move(plan.waiting);
    sleepUntil(plan.nextTime);
    for (const NotificationRequest& request : plan.due)
        m_deliver(request);
}

void NotificationScheduler::sleepUntil(std::optional<Instant> time) {
    m_alarm = time ? m_clock.at(*time, [this] { handOver(); }) : nullptr;
}

} // namespace lumora
