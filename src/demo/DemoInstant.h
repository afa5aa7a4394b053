#pragma once

#include "briefing/Instant.h"

#include <QDate>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace lumora {

/// Whether the demo service's calendar reaches `instant`: the years 2000 to 2199.
bool isDemoInstant(Instant instant);

/// Reads an ISO 8601 date and time such as "2025-03-04T09:30:00+01:00". Without an offset it is
/// local time in `zone`. Absent: not such a text, or out of the service's calendar.
std::optional<Instant> demoInstantFrom(const QString& text, const QTimeZone& zone);

/// `instant` to the second in ISO 8601, local in `zone` with its offset ("Z" for UTC).
QString demoInstantText(Instant instant, const QTimeZone& zone);

/// The calendar day of `instant` in `zone`.
QDate demoDate(Instant instant, const QTimeZone& zone);

/// `instant` in seconds since 1970, to the millisecond: the service's time stamps.
double demoStamp(Instant instant);

} // namespace lumora
