#pragma once

#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>
#include <vector>

namespace lumora::companion {

/// One event as it takes place once, on one day or over several.
struct AgendaEvent {
    QString title; ///< may be empty
    bool allDay = false;
    /// UTC. Of an all-day event the local midnights at which it begins and ends, so that `end`
    /// belongs to the day after it. Otherwise `end` may equal `start`, but never lies before it.
    std::chrono::sys_seconds start;
    std::chrono::sys_seconds end;
    std::optional<QString> location;
    std::optional<QUrl> meetingUrl; ///< https, or http to a host that the user configured
    QString calendar;               ///< the calendar's name in the configuration

    bool operator==(const AgendaEvent&) const = default;
};

/// The events of a day, in the order in which they are shown: all-day events, then by start.
using Agenda = std::vector<AgendaEvent>;

} // namespace lumora::companion
