#pragma once

#include "companion/agenda/AgendaEvent.h"
#include "companion/agenda/Occurrences.h"

namespace lumora::companion {

/// What takes place in one calendar.
struct CalendarPart {
    QString name;
    bool showTransparent = false; ///< see CalendarSettings
    std::vector<Occurrence> occurrences;
};

/// The events of all calendars, in order. Left out: cancelled ones, those that the user declined,
/// those with a time that take up nobody's time where these are not asked for, and what an earlier
/// calendar has already.
[[nodiscard]] Agenda mergedAgenda(const std::vector<CalendarPart>& parts);

/// Puts `agenda` into the order in which it is shown.
void sortAgenda(Agenda& agenda);

} // namespace lumora::companion
