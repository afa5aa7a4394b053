// Whatever a calendar says, its events lie within the days that were asked for, are bounded, and
// have links that may be opened; and working it out comes to an end.
//
// The input is an iCalendar text.

#include "Expectations.h"
#include "Targets.h"
#include "companion/agenda/CalendarText.h"
#include "companion/agenda/MergedAgenda.h"

#include <QTimeZone>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

using namespace lumora::companion;

// Two days in Berlin, between which clocks are put forward.
constexpr TimeSpan days{.from = 1'743'202'800, .to = 1'743'372'000};

const ReaderSettings& fuzzedReader() {
    static const ReaderSettings settings{
        .myAddresses = {u"me@example.org"_s}, .meetingHosts = {u"talk.example.org"_s}};
    return settings;
}

void expectJoinLink(const QUrl& url) {
    expect(url.isValid() && !url.host().isEmpty(), "a link to some host");
    expect(url.userInfo().isEmpty(), "a link that does not pretend");
    const bool isConfigured =
        url.host() == u"talk.example.org" || url.host().endsWith(u".talk.example.org"_s);
    expect(
        url.scheme() == u"https" || (url.scheme() == u"http" && isConfigured),
        "a link over TLS, or to a host that was configured");
}

void expectAgendaEvent(const AgendaEvent& event) {
    const qint64 start = event.start.time_since_epoch().count();
    const qint64 end = event.end.time_since_epoch().count();
    expect(start <= end, "an end that is not before the start");
    expect(start < days.to && end >= days.from, "an event of these days");
    // Eleven years, in which there are clock changes.
    expect(end - start <= qint64{4'000} * 86'400, "an event that ends some time");
    expect(event.title.size() <= 1'000, "a title that can be shown");
    expect(
        !event.location || (!event.location->isEmpty() && event.location->size() <= 1'000),
        "a place that can be shown");
    if (event.allDay)
        expect(end - start >= qint64{22} * 3'600, "days that last");
    if (event.meetingUrl)
        expectJoinLink(*event.meetingUrl);
}

} // namespace

void agenda(QByteArrayView input) {
    static const OffsetAt berlin = offsetsOf(QTimeZone("Europe/Berlin"));
    const auto events = readCalendar(input.toByteArray(), fuzzedReader());
    if (!events)
        return;
    const auto occurrences = occurrencesIn(*events, days, berlin);
    const Agenda shown =
        mergedAgenda({{.name = u"Fuzz"_s, .showTransparent = true, .occurrences = occurrences}});
    expect(shown.size() <= occurrences.size(), "no event out of nothing");
    std::ranges::for_each(shown, expectAgendaEvent);
    const bool isSorted = std::ranges::is_sorted(
        shown, {}, [](const AgendaEvent& event) { return std::pair(!event.allDay, event.start); });
    expect(isSorted, "events in order");
}

} // namespace lumora::fuzz
