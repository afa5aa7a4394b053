#pragma once

#include "companion/agenda/AgendaEvent.h"
#include "companion/parts/Parts.h"

#include <QByteArray>
#include <QDate>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace lumora::companion {

/// A source that does not answer.
struct Trouble {
    QString source; ///< for people: "Spending"
    std::chrono::sys_seconds since;

    bool operator==(const Trouble&) const = default;
};

/// All that goes into a briefing.
struct BriefingParts {
    QDate date; ///< today, where the user is
    Agenda events;
    HabitsPart habits;
    ChoresPart chores;
    FocusPart focus;
    std::optional<SpendingPart> spending;
    std::vector<Trouble> troubles;

    bool operator==(const BriefingParts&) const = default;
};

/// The briefing as docs/SERVICE.md describes it. What has not answered for three hours becomes an
/// all-day event that says so.
[[nodiscard]] QByteArray briefingText(const BriefingParts& parts, std::chrono::sys_seconds now);

} // namespace lumora::companion
