#include "reminders/ReminderPlan.h"

#include <QSet>

#include <algorithm>
#include <iterator>

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

/// The nearest of `events`, which all have a start, in the order they have there.
std::vector<BriefEvent> nearest(const std::vector<BriefEvent>& events, std::size_t count) {
    std::vector<const BriefEvent*> chosen;
    chosen.reserve(events.size());
    for (const BriefEvent& event : events)
        chosen.push_back(&event);
    std::ranges::stable_sort(chosen, {}, [](const BriefEvent* event) { return *event->start; });
    chosen.resize(std::min(count, chosen.size()));
    std::ranges::sort(chosen); // by place in `events`
    std::vector<BriefEvent> result;
    result.reserve(chosen.size());
    for (const BriefEvent* event : chosen)
        result.push_back(*event);
    return result;
}

QString body(const BriefEvent& event) {
    const QString text = u"Starts in %1 min"_s.arg(leadMinutes);
    const QString place = event.location.value_or(QString());
    return place.isEmpty() ? text : text + u" · "_s + place;
}

} // namespace

std::vector<BriefEvent> remindedEvents(const Briefing& briefing, Instant now) {
    std::vector<BriefEvent> events;
    std::ranges::copy_if(
        briefing.eventsToday, std::back_inserter(events),
        [now](const BriefEvent& event) { return isReminded(event, now); });
    return nearest(events, mostReminders);
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
