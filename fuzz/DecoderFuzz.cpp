// Any bytes are a briefing that reads the same when it is written anew, or a fault that is named.

#include "BriefingJson.h"
#include "Expectations.h"
#include "InstantText.h"
#include "Targets.h"
#include "briefing/BriefingDecoder.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

using namespace std::chrono_literals;

namespace lumora::fuzz {

namespace {

/// What JSON cannot say is in no number.
void expectFinite(std::initializer_list<double> numbers) {
    expect(std::ranges::all_of(numbers, [](double n) { return std::isfinite(n); }), "numbers");
}

void expectInstant(const std::optional<Instant>& instant) {
    // The zone may lead into a year beside those with four digits.
    expect(
        !instant || hasOrdinaryYear(*instant - 24h) || hasOrdinaryYear(*instant + 24h),
        "a year with four digits");
}

void expectEvent(const BriefEvent& event) {
    for (const auto& text :
         {std::optional(event.title), event.location, event.feed, event.meetingUrl})
        expectWhole(text.value_or(QString()));
    expectInstant(event.start);
    expectInstant(event.end);
    const QString id = event.id();
    expect(id.startsWith(event.title + u'|'), "an identity that begins with the title");
    bool isNumber = false;
    const double seconds = QStringView(id).sliced(event.title.size() + 1).toDouble(&isNumber);
    const Seconds start = event.start ? Seconds(event.start->time_since_epoch()) : Seconds(0);
    expect(isNumber && seconds == start.count(), "an identity that ends with the start");
}

void expectSpending(const Spending& spending) {
    expectFinite(
        {spending.mtd, spending.sameDayLastMonth, spending.deltaFraction.value_or(0),
         spending.generatedAt});
    expectWhole(spending.asOf);
    for (const Bucket& bucket : spending.top) {
        expectFinite({bucket.amount});
        for (const QString& text : {bucket.bucket, bucket.label, bucket.icon, bucket.color})
            expectWhole(text);
    }
}

void expectBriefing(const Briefing& briefing) {
    expectWhole(briefing.date);
    expectFinite({briefing.generatedAt, briefing.focus.productiveShare.value_or(0)});
    std::ranges::for_each(briefing.eventsToday, expectEvent);
    if (briefing.nextEvent)
        expectEvent(*briefing.nextEvent);
    for (const Chore& chore : briefing.chores.top)
        for (const QString& text : {chore.id, chore.name, chore.room})
            expectWhole(text);
    for (const Habit& habit : briefing.habits.items)
        for (const QString& text : {habit.id, habit.name})
            expectWhole(text);
    const std::vector<Habit> sorted = briefing.habits.byRemaining();
    expect(
        sorted.size() == briefing.habits.items.size() &&
            std::ranges::is_partitioned(sorted, [](const Habit& habit) { return !habit.done; }),
        "every habit, those to do first");
    if (briefing.spending)
        expectSpending(*briefing.spending);
}

void expectFault(const DecodeError& error) {
    expect(!error.description.isEmpty(), "a fault with a description");
    expect(error.text().endsWith(error.description), "a fault that says what is wrong");
    // Keys of the program's own, and numbers; nothing that the text chose.
    expect(
        std::ranges::all_of(
            error.path,
            [](QChar c) {
                return (c.unicode() < 0x80 && c.isLetterOrNumber()) || c == u'.' || c == u'[' ||
                       c == u']';
            }),
        "a path of keys and numbers");
}

} // namespace

void decoder(QByteArrayView input) {
    const auto briefing = decodeBriefing(input);
    if (!briefing) {
        expectFault(briefing.error());
        return;
    }
    expectBriefing(*briefing);
    if (const auto json = jsonOf(*briefing))
        expect(decodeBriefing(*json) == briefing, "the same briefing when it is written anew");
}

} // namespace lumora::fuzz
