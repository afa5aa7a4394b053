#include "companion/agenda/FileZone.h"

#include "companion/agenda/IcalTimes.h"
#include "companion/agenda/Recurrence.h"

#include <algorithm>
#include <vector>

namespace lumora::companion {

namespace {

// 1970 to 2100: before and after them the nearest offset counts.
constexpr TimeSpan coveredYears{.from = 0, .to = qint64{4'102'444'800}};

// No zone of the world has had as many since there are any.
constexpr int mostParts = 500;

/// From when on clocks show another time, and which.
struct Change {
    qint64 utc = 0;
    qint64 before = 0; ///< the offset until then
    qint64 after = 0;
};

// The offset, absent where it is missing or no zone of this planet's.
std::optional<qint64> offset(icalcomponent& part, icalproperty_kind kind) {
    icalproperty* const property = icalcomponent_get_first_property(&part, kind);
    if (!property)
        return std::nullopt;
    const icalvalue* const value = icalproperty_get_value(property);
    if (!value || icalvalue_isa(value) != ICAL_UTCOFFSET_VALUE)
        return std::nullopt;
    const qint64 seconds = icalvalue_get_utcoffset(value);
    return std::abs(seconds) < secondsOfDay ? std::optional(seconds) : std::nullopt;
}

std::optional<qint64> written(const icalproperty& property) {
    const auto time = timeIn(property);
    return time ? writtenSeconds(*time) : std::nullopt;
}

void addChanges(std::vector<Change>& changes, icalcomponent& part, RuleBudget& budget) {
    const auto before = offset(part, ICAL_TZOFFSETFROM_PROPERTY);
    const auto after = offset(part, ICAL_TZOFFSETTO_PROPERTY);
    icalproperty* const first = icalcomponent_get_first_property(&part, ICAL_DTSTART_PROPERTY);
    if (!before || !after || !first)
        return;
    const auto add = [&](qint64 local) {
        changes.push_back({.utc = local - *before, .before = *before, .after = *after});
    };
    const OffsetAt constant = [value = *before](qint64) { return value; };
    const auto begins = written(*first);
    if (!begins)
        return;
    const CalendarTime start{.local = *begins, .isDate = false, .zone = {}};
    add(start.local);
    for (icalproperty* property = icalcomponent_get_first_property(&part, ICAL_ANY_PROPERTY);
         property; property = icalcomponent_get_next_property(&part, ICAL_ANY_PROPERTY)) {
        if (icalproperty_isa(property) == ICAL_RDATE_PROPERTY) {
            if (const auto local = written(*property))
                add(*local);
        }
        if (icalproperty_isa(property) != ICAL_RRULE_PROPERTY)
            continue;
        const char* const rule = icalproperty_get_value_as_string(property);
        for (const qint64 local : ruleStarts(rule, start, coveredYears, constant, budget))
            add(local);
    }
}

} // namespace

std::optional<OffsetAt> fileZone(icalcomponent& zone, RuleBudget& budget) {
    std::vector<Change> changes;
    int parts = 0;
    forEachChild(zone, [&](icalcomponent& part) {
        addChanges(changes, part, budget);
        return ++parts < mostParts;
    });
    if (changes.empty())
        return std::nullopt;
    std::ranges::sort(changes, {}, &Change::utc);
    return [changes = std::move(changes)](qint64 utc) {
        const auto later = std::ranges::upper_bound(changes, utc, {}, &Change::utc);
        return later == changes.begin() ? later->before : std::prev(later)->after;
    };
}

} // namespace lumora::companion
