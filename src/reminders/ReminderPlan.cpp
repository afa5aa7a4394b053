#include "reminders/ReminderPlan.h"

#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

constexpr auto leadMinutes = std::chrono::duration_cast<std::chrono::minutes>(reminderLead).count();

bool isReminded(const BriefEvent& event, Instant now) {
    if (event.allDay || !event.start)
        return false;
    return *event.start - reminderLead > now && *event.start - now < reminderHorizon;
}

/// The `count` nearest of `events`, which lie in one list and all have a start, in their order
/// there. Nothing else is sorted or copied: there may be a hundred thousand.
std::vector<BriefEvent> nearest(std::vector<const BriefEvent*> events, std::size_t count) {
    const auto startAndPlace = [](const BriefEvent* event) {
        return std::pair(*event->start, event);
    };
    const auto end = events.begin() + qsizetype(std::min(count, events.size()));
    std::ranges::partial_sort(events, end, {}, startAndPlace);
    std::sort(events.begin(), end); // by place
    std::vector<BriefEvent> result;
    std::transform(events.begin(), end, std::back_inserter(result), [](const BriefEvent* event) {
        return *event;
    });
    return result;
}

QString body(const BriefEvent& event) {
    const QString text = u"Starts in %1 min"_s.arg(leadMinutes);
    const QString place = event.location.value_or(QString());
    return place.isEmpty() ? text : text + u" · "_s + place;
}

} // namespace

std::vector<BriefEvent> remindedEvents(const Briefing& briefing, Instant now) {
    std::vector<const BriefEvent*> events;
    for (const BriefEvent& event : briefing.eventsToday) {
        if (isReminded(event, now))
            events.push_back(&event);
    }
    return nearest(std::move(events), mostReminders);
}

NotificationRequest reminderRequest(const BriefEvent& event, Instant now, const LinkPolicy& links) {
    NotificationRequest request{
        .identifier = event.id(),
        .title = event.title,
        .body = body(event),
        .userInfo = {},
        .button = {},
        .fireTime = std::max<Instant>(*event.start - reminderLead, now + 1s),
        .usefulUntil = event.start,
    };
    if (event.meetingUrl) {
        request.userInfo.insert(meetingUrlKey, *event.meetingUrl);
        if (links.link(*event.meetingUrl))
            request.button = u"Join"_s;
    }
    return request;
}

QStringList
staleIdentifiers(const QStringList& pending, const std::vector<BriefEvent>& remindedEvents) {
    QSet<QString> wanted;
    for (const BriefEvent& event : remindedEvents)
        wanted.insert(event.id());
    QStringList stale;
    std::ranges::copy_if(pending, std::back_inserter(stale), [&wanted](const QString& identifier) {
        return !wanted.contains(identifier);
    });
    return stale;
}

} // namespace lumora
