#include "companion/agenda/Recurrence.h"

#include "companion/agenda/IcalHandles.h"
#include "companion/agenda/IcalTimes.h"

#include <algorithm>
#include <cstdlib>

namespace lumora::companion {

namespace {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

icaltimetype icalTime(qint64 local, bool isDate) {
    return icaltime_from_timet_with_zone(local, isDate ? 1 : 0, nullptr);
}

// The last date and time that a rule may come to, as clocks show it where its event takes place.
qint64 lastLocal(const icaltimetype& until, const CalendarTime& start, const OffsetAt& here) {
    const qint64 written = writtenSeconds(until).value_or(start.local);
    if (start.isDate)
        return CalendarTime{.local = written, .isDate = true, .zone = {}}.day();
    if (until.is_date)
        return written + secondsOfDay - 1;
    return icaltime_is_utc(until) ? written + start.zoneOr(here)(written) : written;
}

// The parts of a rule that clocks alone know do not move a whole day.
void forgetTimesOfDay(icalrecurrencetype& rule) {
    rule.by_hour[0] = rule.by_minute[0] = rule.by_second[0] = ICAL_RECURRENCE_ARRAY_MAX;
}

} // namespace

std::vector<qint64> ruleStarts(
    const QByteArray& rule, const CalendarTime& start, TimeSpan span, const OffsetAt& here,
    RuleBudget& budget) {
    icalrecurrencetype parts = icalrecurrencetype_from_string(rule.constData());
    const std::unique_ptr<char, FreeText> rscale(parts.rscale);
    // Finer ones are never meant, and some of them would keep the library busy for ever.
    if (parts.freq < ICAL_DAILY_RECURRENCE || parts.freq > ICAL_YEARLY_RECURRENCE)
        return {};
    if (budget.deadRules <= 0 || budget.dates <= 0)
        return {};
    if (start.isDate)
        forgetTimesOfDay(parts);

    qint64 last = span.to - 1;
    if (!icaltime_is_null_time(parts.until))
        last = std::min(last, lastLocal(parts.until, start, here));
    if (last < std::max(span.from, start.local))
        return {};
    parts.until = icalTime(last, start.isDate);

    const IcalIterator iterator(icalrecur_iterator_new(parts, icalTime(start.local, start.isDate)));
    if (!iterator) {
        --budget.deadRules;
        return {};
    }
    if (parts.count == 0 && span.from > start.local)
        icalrecur_iterator_set_start(iterator.get(), icalTime(span.from, start.isDate));

    std::vector<qint64> starts;
    for (int left = budget.eventDates; left > 0 && budget.dates > 0; --left, --budget.dates) {
        const auto local = writtenSeconds(icalrecur_iterator_next(iterator.get()));
        if (!local)
            break; // the rule is at its end
        if (*local >= span.from && *local < span.to)
            starts.push_back(*local);
    }
    return starts;
}

} // namespace lumora::companion
