#include "companion/agenda/Occurrences.h"

#include "companion/agenda/FollowingChanges.h"
#include "companion/agenda/LeftOutDates.h"
#include "companion/agenda/Series.h"

#include <algorithm>

namespace lumora::companion {

namespace {

// No two clocks of the world differ by more, and none is put forward or back by more.
constexpr qint64 zoneMargin = 2 * secondsOfDay;

/// Where and for whom occurrences are sought.
struct Search {
    TimeSpan span;
    const OffsetAt& here;
};

qint64 endOf(const CalendarTime& start, const EventLength& length, const OffsetAt& here) {
    CalendarTime shown = start;
    shown.local += length.local;
    return std::max(start.utc(here), shown.utc(here) + length.exact);
}

bool touches(const Occurrence& occurrence, TimeSpan span) {
    const bool isOver = occurrence.end < span.from ||
                        (occurrence.end == span.from && occurrence.start < occurrence.end);
    return occurrence.start < span.to && !isOver;
}

Occurrence occurrence(
    const EventRecord& event, const CalendarTime& start, const EventLength& length,
    const OffsetAt& here) {
    return {.event = &event, .start = start.utc(here), .end = endOf(start, length, here)};
}

CalendarTime movedTo(const CalendarTime& start, qint64 local) {
    return {.local = local, .isDate = start.isDate, .zone = start.zone};
}

// Local times at which what lasts so long may begin, to take place in the span.
TimeSpan possibleStarts(const EventLength& length, TimeSpan span) {
    return {
        .from = span.from - length.local - length.exact - zoneMargin, .to = span.to + zoneMargin};
}

// Asked first, because to tell for certain takes a look at zones.
bool mayTouch(const CalendarTime& start, const EventLength& length, TimeSpan span) {
    const TimeSpan possible = possibleStarts(length, span);
    return start.local >= possible.from && start.local < possible.to;
}

/// One event of a series that repeats, with what becomes of it later.
struct Repeated {
    const Series& series;
    const EventRecord& master;
    std::vector<FollowingChange> changes;
    /// Local times: whatever takes place in the span was planned for one of these.
    TimeSpan planned;
};

Repeated repeated(const Series& series, const EventRecord& master, const Search& search) {
    Repeated made{
        .series = series,
        .master = master,
        .changes = followingChanges(series, master, search.here),
        .planned = possibleStarts(master.length, search.span)};
    for (const FollowingChange& change : made.changes) {
        const TimeSpan moved = possibleStarts(change.event->length, search.span);
        made.planned.from = std::min(made.planned.from, moved.from - change.shift);
        made.planned.to = std::max(made.planned.to, moved.to - change.shift);
    }
    return made;
}

/// Every date of a series in the span with those that are left out, the first one included.
std::vector<ExtraStart>
allStarts(const Repeated& repeated, const Search& search, RuleBudget& budget) {
    const EventRecord& master = repeated.master;
    std::vector<ExtraStart> starts = master.extras;
    starts.push_back({.start = master.start, .length = {}});
    for (const QByteArray& rule : master.rules) {
        for (const qint64 local :
             ruleStarts(rule, master.start, repeated.planned, search.here, budget))
            starts.push_back({.start = movedTo(master.start, local), .length = {}});
    }
    return starts;
}

LeftOutDates leftOut(const Repeated& repeated, const Search& search, RuleBudget& budget) {
    const EventRecord& master = repeated.master;
    LeftOutDates dates(search.here);
    for (const CalendarTime& exception : master.exceptions)
        dates.add(exception);
    for (const EventRecord* const moved : repeated.series.moved)
        dates.add(*moved->replaces);
    for (const QByteArray& rule : master.exceptRules) {
        for (const qint64 local :
             ruleStarts(rule, master.start, repeated.planned, search.here, budget))
            dates.add(movedTo(master.start, local));
    }
    return dates;
}

void addRepeated(
    std::vector<Occurrence>& found, const Series& series, const EventRecord& master,
    const Search& search, RuleBudget& budget) {
    const Repeated all = repeated(series, master, search);
    const LeftOutDates dates = leftOut(all, search, budget);
    std::vector<Occurrence> own;
    for (const ExtraStart& extra : allStarts(all, search, budget)) {
        const FollowingChange* const change = changeFor(all.changes, extra.start, search.here);
        const EventRecord& event = change ? *change->event : master;
        const CalendarTime start = change ? change->movedFrom(extra.start) : extra.start;
        const EventLength& length = extra.length ? *extra.length : event.length;
        if (!mayTouch(start, length, search.span) || dates.contain(extra.start))
            continue;
        const Occurrence made = occurrence(event, start, length, search.here);
        if (touches(made, search.span))
            own.push_back(made);
    }
    // A date that is listed and comes out of a rule as well is one.
    std::ranges::stable_sort(own, {}, &Occurrence::start);
    const auto twice = std::ranges::unique(own, {}, &Occurrence::start);
    found.insert(found.end(), own.begin(), twice.begin());
}

} // namespace

std::vector<Occurrence> occurrencesIn(
    const std::vector<EventRecord>& events, TimeSpan span, const OffsetAt& here,
    RuleBudget budget) {
    const Search search{.span = span, .here = here};
    std::vector<Occurrence> found;
    for (const Series& series : seriesOf(events, here)) {
        for (const EventRecord* const master : series.masters)
            addRepeated(found, series, *master, search, budget);
        for (const EventRecord* const moved : series.moved) {
            if (!mayTouch(moved->start, moved->length, span))
                continue;
            const Occurrence made = occurrence(*moved, moved->start, moved->length, here);
            if (touches(made, span))
                found.push_back(made);
        }
    }
    return found;
}

} // namespace lumora::companion
