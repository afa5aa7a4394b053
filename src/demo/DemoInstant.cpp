#include "demo/DemoInstant.h"

#include <QDateTime>

namespace lumora {

namespace {

QDateTime inZone(Instant instant, const QTimeZone& zone) {
    return toDateTime(instant).toTimeZone(zone);
}

} // namespace

bool isDemoInstant(Instant instant) {
    using namespace std::chrono;
    return instant >= sys_days(year(2000) / January / 1) &&
           instant < sys_days(year(2200) / January / 1);
}

std::optional<Instant> demoInstantFrom(const QString& text, const QTimeZone& zone) {
    // A day alone would silently become its midnight.
    if (!text.contains(u'T'))
        return std::nullopt;
    auto dateTime = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!dateTime.isValid())
        return std::nullopt;
    if (dateTime.timeSpec() == Qt::LocalTime)
        dateTime = QDateTime(dateTime.date(), dateTime.time(), zone);
    const Instant instant{std::chrono::milliseconds(dateTime.toMSecsSinceEpoch())};
    if (!isDemoInstant(instant))
        return std::nullopt;
    return instant;
}

QString demoInstantText(Instant instant, const QTimeZone& zone) {
    const auto local = inZone(instant, zone);
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate);
}

QDate demoDate(Instant instant, const QTimeZone& zone) {
    return inZone(instant, zone).date();
}

double demoStamp(Instant instant) {
    return static_cast<double>(toDateTime(instant).toMSecsSinceEpoch()) / 1000.0;
}

} // namespace lumora
