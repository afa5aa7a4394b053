#include "companion/agenda/IcalTimes.h"

#include <chrono>

namespace lumora::companion {

std::optional<icaltimetype> timeIn(const icalproperty& property) {
    const icalvalue* const value = icalproperty_get_value(&property);
    switch (value ? icalvalue_isa(value) : ICAL_NO_VALUE) {
    case ICAL_DATE_VALUE:
        return icalvalue_get_date(value);
    case ICAL_DATETIME_VALUE:
        return icalvalue_get_datetime(value);
    case ICAL_DATETIMEPERIOD_VALUE: {
        const icaldatetimeperiodtype either = icalvalue_get_datetimeperiod(value);
        return icaltime_is_null_time(either.time) ? either.period.start : either.time;
    }
    case ICAL_PERIOD_VALUE:
        return icalvalue_get_period(value).start;
    default:
        return std::nullopt;
    }
}

std::optional<qint64> writtenSeconds(const icaltimetype& time) {
    using namespace std::chrono;
    const year_month_day day(
        year(time.year), month(static_cast<unsigned>(time.month)),
        std::chrono::day(static_cast<unsigned>(time.day)));
    const bool isTime = time.hour >= 0 && time.hour <= 24 && time.minute >= 0 && time.minute < 60 &&
                        time.second >= 0 && time.second <= 60;
    if (time.year < 1 || time.year > 9999 || !day.ok() || (!time.is_date && !isTime))
        return std::nullopt;
    const seconds intoDay =
        time.is_date ? seconds(0) : hours(time.hour) + minutes(time.minute) + seconds(time.second);
    return (sys_days(day).time_since_epoch() + intoDay).count();
}

} // namespace lumora::companion
