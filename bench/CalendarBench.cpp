// What reading a calendar and working out a day of it cost, beside the library's bare parse of the
// same text, which keeps everything and knows nothing of days.

#include "ManyEvents.h"
#include "companion/agenda/CalendarText.h"
#include "companion/agenda/MergedAgenda.h"

#include <QDateTime>
#include <QTimeZone>

#include <benchmark/benchmark.h>
#include <libical/ical.h>

#include <map>

namespace {

using namespace lumora::companion;

const QDate day(2025, 3, 4);

const QByteArray& calendarOf(int count) {
    static std::map<int, QByteArray> made;
    QByteArray& text = made[count];
    if (text.isEmpty())
        text = lumora::manyEvents(count, day);
    return text;
}

void parseBareCalendar(benchmark::State& state) {
    const QByteArray& text = calendarOf(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        icalcomponent* calendar = icalparser_parse_string(text.constData());
        benchmark::DoNotOptimize(calendar);
        icalcomponent_free(calendar);
    }
    state.counters["bytes"] = static_cast<double>(text.size());
}

void readWholeCalendar(benchmark::State& state) {
    const QByteArray& text = calendarOf(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        auto events = readCalendar(text, {});
        if (!events || qsizetype(events->size()) != state.range(0))
            state.SkipWithError("not all events were read");
        benchmark::DoNotOptimize(events);
    }
}

void workOutDay(benchmark::State& state) {
    const auto events = readCalendar(calendarOf(static_cast<int>(state.range(0))), {});
    const QTimeZone zone("Europe/Berlin");
    const OffsetAt here = offsetsOf(zone);
    const TimeSpan span{
        .from = day.startOfDay(zone).toSecsSinceEpoch(),
        .to = day.addDays(1).startOfDay(zone).toSecsSinceEpoch()};
    std::size_t shown = 0;
    for ([[maybe_unused]] auto _ : state) {
        CalendarPart part{.name = {}, .showTransparent = false, .occurrences = {}};
        part.occurrences = occurrencesIn(*events, span, here);
        Agenda agenda = mergedAgenda({part});
        shown = agenda.size();
        benchmark::DoNotOptimize(agenda);
    }
    if (shown == 0)
        state.SkipWithError("a day without events");
    state.counters["shown"] = static_cast<double>(shown);
}

} // namespace

BENCHMARK(parseBareCalendar)->ArgName("events")->Arg(100)->Arg(10'000);
BENCHMARK(readWholeCalendar)->ArgName("events")->Arg(100)->Arg(10'000);
BENCHMARK(workOutDay)->ArgName("events")->Arg(100)->Arg(10'000);
