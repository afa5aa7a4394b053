#pragma once

#include "briefing/Instant.h"

#include <QLocale>
#include <QString>
#include <QTimeZone>

/// The short texts for numbers and instants that every view shares, so that they agree on wording.
namespace lumora::Formatters {

/// A fraction of 1 as a whole percentage in plain decimal digits, halves away from zero: "43%" for
/// 0.425. Neither clamped nor localised; what rounds to zero has no sign.
QString percent(double fraction);

/// An amount of money without a fraction, in `locale`'s currency, grouping and digits: "$1,235".
/// "$" and plain digits where the locale has no currency.
QString currency(double amount, const QLocale& locale = QLocale::system());

/// How long from `from` until `to`: "now" below a second, then "5m", "2h", "1h5m" or "3d".
QString countdown(Instant to, Instant from);

/// How long `date` lies before `from`: "just now" below 45 seconds and for the future, then
/// "5m ago", "2h ago" or "3d ago".
QString relative(Instant date, Instant from);

/// The time of day in `zone`, on a twelve-hour clock with `locale`'s digits: "9:05 am".
QString clock(
    Instant instant, const QTimeZone& zone = QTimeZone::systemTimeZone(),
    const QLocale& locale = QLocale::system());

} // namespace lumora::Formatters
