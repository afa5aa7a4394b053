#include "companion/agenda/Series.h"

#include <algorithm>
#include <span>
#include <tuple>

namespace lumora::companion {

namespace {

using Records = std::vector<const EventRecord*>;

/// What editions of one event have in common.
auto identity(const CalendarTime& time, const OffsetAt& here) {
    return std::tuple(time.isDate, time.utc(here));
}

// Of those with one identity the one of the highest sequence; of equals the last in the file.
template <typename Identity>
void keepLastEditions(Records& records, const Identity& identityOf) {
    if (records.size() < 2)
        return;
    std::ranges::stable_sort(records, [&](const EventRecord* one, const EventRecord* other) {
        return std::tuple(identityOf(*one), one->sequence) <
               std::tuple(identityOf(*other), other->sequence);
    });
    Records kept;
    for (const EventRecord* const record : records) {
        if (!kept.empty() && identityOf(*kept.back()) == identityOf(*record))
            kept.back() = record;
        else
            kept.push_back(record);
    }
    records = std::move(kept);
}

Series seriesFrom(std::span<const EventRecord* const> group, const OffsetAt& here) {
    Series series;
    for (const EventRecord* const record : group)
        (record->replaces ? series.moved : series.masters).push_back(record);
    // Some programs write what they repeat as if it replaced something.
    if (series.masters.empty()) {
        const auto repeats = [](const EventRecord* record) { return !record->rules.isEmpty(); };
        std::ranges::copy_if(series.moved, std::back_inserter(series.masters), repeats);
        std::erase_if(series.moved, repeats);
    }
    keepLastEditions(series.masters, [&here](const EventRecord& record) {
        return identity(record.start, here);
    });
    keepLastEditions(series.moved, [&here](const EventRecord& record) {
        return identity(*record.replaces, here);
    });
    return series;
}

} // namespace

std::vector<Series> seriesOf(const std::vector<EventRecord>& events, const OffsetAt& here) {
    Records sorted;
    sorted.reserve(events.size());
    for (const EventRecord& event : events)
        sorted.push_back(&event);
    std::ranges::stable_sort(sorted, {}, [](const EventRecord* event) { return event->uid; });

    std::vector<Series> all;
    for (auto from = sorted.begin(); from != sorted.end();) {
        const QByteArray& uid = (*from)->uid;
        const auto to = uid.isEmpty()
                            ? std::next(from)
                            : std::find_if(from, sorted.end(), [&uid](const EventRecord* event) {
                                  return event->uid != uid;
                              });
        all.push_back(seriesFrom(std::span(from, to), here));
        from = to;
    }
    return all;
}

} // namespace lumora::companion
