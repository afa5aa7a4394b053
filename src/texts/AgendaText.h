#pragma once

#include "texts/Agenda.h"

#include <QLocale>
#include <QTimeZone>

namespace lumora {

/// The agenda for a terminal: lines, each ended, of which no part of a title is obeyed there.
[[nodiscard]] QString agendaText(
    const Agenda& agenda, const QTimeZone& zone = QTimeZone::systemTimeZone(),
    const QLocale& locale = QLocale::system());

/// The habits, or the chores, as one line each of id and name with a tab between them. Those whose
/// id is not the same on one line are left out.
[[nodiscard]] QString habitList(const Agenda& agenda);
[[nodiscard]] QString choreList(const Agenda& agenda);

} // namespace lumora
