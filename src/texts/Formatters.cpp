#include "texts/Formatters.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace lumora::Formatters {

namespace {

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr qint64 day = 24 * hour;

/// Whole seconds, cut toward zero. Instants lie within 300,000 years of each other, so the number
/// always fits.
qint64 wholeSeconds(Instant from, Instant to) {
    return std::chrono::duration_cast<std::chrono::seconds>(to - from).count();
}

/// Whole minutes below an hour; a part of the first minute counts as one.
QString minutesText(qint64 seconds) {
    return QString::number(seconds < minute ? 1 : seconds / minute) + u'm';
}

/// `value` rounded to the nearest integer, halves away from zero, in plain decimal digits.
QString roundedText(double value) {
    // Adding zero turns a negative zero into a plain one.
    return QString::number(std::round(value) + 0.0, 'f', 0);
}

} // namespace

QString percent(double fraction) {
    // Where a hundred times as much is beyond all numbers, it would have no digits.
    constexpr double most = std::numeric_limits<double>::max();
    return roundedText(std::clamp(fraction * 100, -most, most)) + u'%';
}

QString currency(double amount, const QLocale& locale) {
    // The sign goes before the whole text, as people write it: the toolkit's own negative forms are
    // those of book-keeping ("($12)") in some locales and break the text ("₹-12") in others.
    const double size = std::round(std::abs(amount));
    const bool negative = amount < 0 && size > 0;
    if (std::isfinite(amount) && !locale.currencySymbol().isEmpty()) {
        const QString text = locale.toCurrencyString(size, {}, 0);
        if (!text.isEmpty())
            return negative ? locale.negativeSign() + text : text;
    }
    return u'$' + roundedText(amount);
}

QString countdown(Instant to, Instant from) {
    const qint64 seconds = wholeSeconds(from, to);
    if (seconds < 1)
        return u"now"_s;
    if (seconds < hour)
        return minutesText(seconds);
    if (seconds >= day)
        return u"%1d"_s.arg(seconds / day);
    const qint64 minutes = seconds % hour / minute;
    const QString hours = u"%1h"_s.arg(seconds / hour);
    return minutes == 0 ? hours : hours + minutesText(minutes * minute);
}

QString relative(Instant date, Instant from) {
    const qint64 seconds = wholeSeconds(date, from);
    if (seconds < 45)
        return u"just now"_s;
    if (seconds < hour)
        return minutesText(seconds) + " ago"_L1;
    if (seconds >= day)
        return u"%1d ago"_s.arg(seconds / day);
    return u"%1h ago"_s.arg(seconds / hour);
}

QString clock(Instant instant, const QTimeZone& zone, const QLocale& locale) {
    // A system whose zone has no name known to the toolkit still has a local time.
    const QDateTime utc = toDateTime(instant);
    const QTime time = (zone.isValid() ? utc.toTimeZone(zone) : utc.toLocalTime()).time();
    const int hours = (time.hour() + 11) % 12 + 1;
    const QString padding = time.minute() < 10 ? locale.zeroDigit() : QString();
    return locale.toString(hours) + u':' + padding + locale.toString(time.minute()) +
           (time.hour() < 12 ? " am"_L1 : " pm"_L1);
}

} // namespace lumora::Formatters
