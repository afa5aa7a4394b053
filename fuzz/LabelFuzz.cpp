// A meeting that a stranger has sent, in everything that the status area says of it.
//
// The input is times and choices, then title, place, link, the latest failure and the label's
// figure, with byte 255 between them.

#include "Expectations.h"
#include "Input.h"
#include "StatusLines.h"
#include "Targets.h"
#include "texts/CharacterFinder.h"
#include "texts/Formatters.h"
#include "texts/MenuBarLabel.h"
#include "texts/StatusPresentation.h"

using namespace std::chrono_literals;

namespace lumora::fuzz {

namespace {

constexpr Instant noon = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 12h;

/// Within nine hours around noon for the most part, where meetings come and go.
Instant someTime(Input& input) {
    return input.below(8) == 0 ? input.instant()
                               : noon + std::chrono::seconds(input.number<std::int16_t>());
}

std::optional<Instant> perhapsSomeTime(Input& input) {
    return input.below(4) == 0 ? std::nullopt : std::optional(someTime(input));
}

BriefEvent someEvent(Input& input) {
    BriefEvent event;
    event.start = perhapsSomeTime(input);
    event.end = perhapsSomeTime(input);
    event.allDay = input.below(8) == 0;
    return event;
}

/// From a little below nothing on.
qint64 someCount(Input& input) {
    return input.below(12) - 2;
}

Briefing someBriefing(Input& input) {
    Briefing briefing;
    briefing.eventsToday.push_back(someEvent(input));
    briefing.eventsToday.push_back(someEvent(input));
    briefing.habits = {someCount(input), someCount(input), {}};
    briefing.chores.count = someCount(input);
    return briefing;
}

LoadState someState(Input& input, const Briefing& briefing) {
    switch (input.below(4)) {
    case 0:
        return {};
    case 1:
        return LoadState::loading();
    case 2:
        return LoadState::loaded(briefing);
    default:
        return LoadState::failed(input.text());
    }
}

qsizetype characterCount(QStringView text) {
    CharacterFinder finder(text);
    qsizetype count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

/// Expects a title, shortened to `most` characters, to take no more room than that, an ellipsis
/// and what stands beside it.
void expectRoom(QStringView text, qsizetype most, qsizetype beside) {
    expect(characterCount(text) <= most + 1 + beside, "a text that was shortened");
}

void expectContent(const StatusItemContent& content, bool isMeeting) {
    expect(!content.symbol.isEmpty(), "a symbol");
    if (content.text) {
        expect(!content.text->isEmpty(), "no text rather than an empty one");
        expectLine(*content.text);
        expectWhole(*content.text);
        if (isMeeting)
            expectRoom(*content.text, 16, 9); // " · 29m"
    }
    expectLine(content.title);
    expectLine(content.toolTipTitle);
    expectLines(content.toolTipBody);
    for (const StatusMenuRow& row : content.menu)
        expectRoom(row.label, 48, 11); // "12:34 pm · "
}

/// A time at which something changes, or nothing should.
Instant someInterestingTime(Input& input, const Briefing& briefing) {
    std::vector<Instant> times{someTime(input)};
    const BriefEvent& event = briefing.eventsToday.front();
    if (event.start)
        times.insert(times.end(), {*event.start - 30min, *event.start});
    if (event.end)
        times.push_back(*event.end);
    return times[size_t(input.below(int(times.size())))];
}

/// What is told of `content` over the bus; `texts` are any.
StatusReport
reportOf(const StatusItemContent& content, const LoadState& state, const QString& texts) {
    return {
        .mode = texts,
        .symbol = content.symbol,
        .text = content.text,
        .tooltip = content.toolTipTitle + u'\n' + content.toolTipBody,
        .state = state.name(),
        .message = state.failureMessage(),
        .lastUpdated = std::nullopt,
        .pending = {texts},
        .actionError = state.failureMessage(),
    };
}

} // namespace

void label(QByteArrayView input) {
    Input values(input);
    Briefing briefing = someBriefing(values);
    const auto updated = perhapsSomeTime(values);
    const Instant now = someInterestingTime(values, briefing);
    const bool isThere = values.below(8) != 0;
    briefing.eventsToday.front().title = values.text();
    briefing.eventsToday.front().location = values.text();
    briefing.eventsToday.front().meetingUrl = values.text();
    const LoadState state = someState(values, briefing);
    const QString ambient = values.text();
    const auto lastGood = isThere ? std::optional(briefing) : std::nullopt;
    const auto content = statusItemContent({
        .lastGood = lastGood,
        .state = state,
        .lastUpdated = updated,
        .menuBarAmbient = ambient,
        .now = now,
        .timeZone = QTimeZone(3600),
        .locale = QLocale::c(),
    });
    expectContent(content, lastGood && MenuBarLabel::meeting(*lastGood, now));
    const StatusReport report = reportOf(content, state, ambient);
    expectStatusLines(report);
    expect(StatusReport::fromJson(report.toJson()) == report, "the report that was sent");
}

} // namespace lumora::fuzz
