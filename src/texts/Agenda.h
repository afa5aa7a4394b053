#pragma once

#include "briefing/Briefing.h"
#include "platform/LinkPolicy.h"

#include <QByteArray>

namespace lumora {

/// An entry of the calendar, as other programs hear of it: without its link, which may let whoever
/// has it into the meeting.
struct AgendaEvent {
    QString title;
    std::optional<Instant> start; ///< absent: it has no time of its own
    std::optional<Instant> end;   ///< absent: open-ended
    bool allDay = false;
    std::optional<QString> location;
    bool canJoin = false; ///< it has a link that may be opened

    bool operator==(const AgendaEvent&) const = default;
};

/// What is left of the day: the panel's sections, but for the spending, which stays there.
struct Agenda {
    QString date;                    ///< the day described, as the service writes it
    std::vector<AgendaEvent> events; ///< those that are not over, in the service's order
    Habits habits;
    Chores chores;
    std::optional<double> focus; ///< fraction of 1; absent: no figure

    /// What `briefing` says at `now`. Of no section more than the panel has room for.
    static Agenda of(const Briefing& briefing, Instant now, const LinkPolicy& links);

    /// One JSON object on one line, without a line break; absent values are null, instants are
    /// ISO 8601 in UTC. What a terminal might obey is escaped.
    [[nodiscard]] QByteArray toJson() const;

    /// What `toJson` made `json` from; absent when that is no object. Members that are missing are
    /// absent or empty.
    static std::optional<Agenda> fromJson(const QByteArray& json);

    bool operator==(const Agenda&) const = default;
};

} // namespace lumora
