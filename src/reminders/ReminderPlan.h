#pragma once

#include "briefing/Briefing.h"
#include "platform/LinkPolicy.h"
#include "platform/NotificationCenter.h"

#include <vector>

namespace lumora {

/// Under what a reminder carries the address of its meeting, as text.
inline const QString meetingUrlKey = QStringLiteral("meetingUrl");

/// How long before a meeting its reminder comes.
inline constexpr std::chrono::seconds reminderLead{300};

/// Meetings this far away or farther are left to a later briefing.
inline constexpr std::chrono::seconds reminderHorizon{21600};

/// How many meetings are reminded of at a time. No day has so many in six hours; a calendar gone
/// wrong may have thousands.
inline constexpr std::size_t mostReminders = 50;

/// The events of today that are to be reminded of, in the producer's order: those with a time of
/// their own whose reminder is due strictly after `now` and whose start is strictly nearer than the
/// horizon. Of more than `mostReminders` the nearest, of equally near ones the first.
std::vector<BriefEvent> remindedEvents(const Briefing& briefing, Instant now);

/// The reminder of an event that has a start. It is due at least a second after `now`, so that a
/// moment that passed while the reminder was prepared is not lost. It has a button where `links`
/// allows the event's.
NotificationRequest reminderRequest(const BriefEvent& event, Instant now, const LinkPolicy& links);

/// Those of the `pending` identifiers, in their order, that belong to none of the events.
QStringList
staleIdentifiers(const QStringList& pending, const std::vector<BriefEvent>& remindedEvents);

} // namespace lumora
