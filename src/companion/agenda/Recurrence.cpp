#include "companion/agenda/Recurrence.h"

#include "companion/agenda/IcalHandles.h"
#include "companion/agenda/IcalTimes.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <span>
#include <type_traits>
#include <utility>

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

/// Takes the time that it exists for off a budget.
class Spending {
public:
    explicit Spending(RuleBudget& budget)
        : m_budget(budget)
        , m_left(budget.time)
        , m_begin(processorTime()) {}

    ~Spending() { m_budget.time = m_left - (processorTime() - m_begin); }

    Spending(const Spending&) = delete;
    Spending& operator=(const Spending&) = delete;

    bool isOver() const { return processorTime() - m_begin >= m_left; }

private:
    // Of this thread alone: a busy computer takes no dates away.
    static std::chrono::nanoseconds processorTime() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }

    RuleBudget& m_budget;
    const std::chrono::nanoseconds m_left;
    const std::chrono::nanoseconds m_begin;
};

// Whether a month that the rule names has a day that it names. Where none has, the library takes a
// while to find out.
bool hasSomeDay(const icalrecurrencetype& rule) {
    static constexpr std::array<int, 12> longest{31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const auto end = [](const auto& values) {
        return std::ranges::find(values, ICAL_RECURRENCE_ARRAY_MAX);
    };
    const std::span days(std::begin(rule.by_month_day), end(rule.by_month_day));
    const std::span months(std::begin(rule.by_month), end(rule.by_month));
    if (rule.rscale || days.empty() || months.empty())
        return true;
    return std::ranges::any_of(months, [days](short month) {
        return month >= 1 && month <= 12 && std::ranges::any_of(days, [month](short day) {
                   return std::abs(day) <= longest[static_cast<std::size_t>(month - 1)];
               });
    });
}

// The day of the week, counted from the one that weeks begin with. 1970 began on a Thursday.
qint64 dayOfWeek(qint64 local, qint64 weekStart) {
    constexpr qint64 thursday = 5;
    const qint64 days =
        CalendarTime{.local = local, .isDate = false, .zone = {}}.day() / secondsOfDay;
    return ((days + thursday - weekStart) % 7 + 7) % 7;
}

// Where to have the library begin with the weeks of a rule: at the first of its days in the week of
// its start. Begun elsewhere in the week it takes a day of the week before for one of that week.
qint64 firstOfWeek(const icalrecurrencetype& rule, qint64 start) {
    const qint64 weekStart = rule.week_start;
    qint64 first = 7;
    for (const short day : rule.by_day) {
        if (day == ICAL_RECURRENCE_ARRAY_MAX)
            break;
        const qint64 number = icalrecurrencetype_day_day_of_week(day);
        first = std::min(first, (number - weekStart + 7) % 7);
    }
    return first == 7 ? start : start + (first - dayOfWeek(start, weekStart)) * secondsOfDay;
}

// With weeks that begin on another day than Monday the library takes wrong days of numbered weeks.
bool isOnListedDay(const icalrecurrencetype& rule, qint64 local) {
    constexpr qint64 sunday = 1;
    if (rule.by_day[0] == ICAL_RECURRENCE_ARRAY_MAX)
        return true;
    return std::ranges::any_of(rule.by_day, [day = dayOfWeek(local, sunday) + 1](short listed) {
        return listed != ICAL_RECURRENCE_ARRAY_MAX &&
               icalrecurrencetype_day_day_of_week(listed) == day;
    });
}

using MonthDays = std::array<short, std::extent_v<decltype(icalrecurrencetype::by_month_day)>>;

// Days of a month that are counted from its end and filter the days of a daily rule, which the
// library cannot do. Taken out of the rule; empty (only ends): it has none.
MonthDays takeDaysFromTheEnd(icalrecurrencetype& rule) {
    MonthDays taken;
    taken.fill(ICAL_RECURRENCE_ARRAY_MAX);
    const bool hasSome = std::ranges::any_of(rule.by_month_day, [](short day) { return day < 0; });
    if (rule.freq != ICAL_DAILY_RECURRENCE || !hasSome)
        return taken;
    std::ranges::swap_ranges(rule.by_month_day, taken);
    return taken;
}

bool isOnDayOfMonth(const MonthDays& days, const icaltimetype& time) {
    if (days[0] == ICAL_RECURRENCE_ARRAY_MAX)
        return true;
    const int fromEnd = time.day - icaltime_days_in_month(time.month, time.year) - 1;
    return std::ranges::any_of(days, [&](short day) { return day == time.day || day == fromEnd; });
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
    const Spending spending(budget);
    if (spending.isOver() || budget.dates <= 0)
        return {};
    if (!hasSomeDay(parts))
        return {};
    if (start.isDate)
        forgetTimesOfDay(parts);
    const MonthDays monthDays = takeDaysFromTheEnd(parts);

    qint64 last = span.to - 1;
    if (!icaltime_is_null_time(parts.until))
        last = std::min(last, lastLocal(parts.until, start, here));
    if (last < std::max(span.from, start.local))
        return {};
    parts.until = icalTime(last, start.isDate);

    const int count = std::exchange(parts.count, 0);
    const qint64 begin =
        parts.freq == ICAL_WEEKLY_RECURRENCE ? firstOfWeek(parts, start.local) : start.local;
    const IcalIterator iterator(icalrecur_iterator_new(parts, icalTime(begin, start.isDate)));
    if (!iterator)
        return {}; // it never comes to a date
    if (count == 0 && span.from > begin)
        icalrecur_iterator_set_start(iterator.get(), icalTime(span.from, start.isDate));

    std::vector<qint64> starts;
    int counted = 0;
    for (int left = budget.eventDates; left > 0 && budget.dates > 0 && !spending.isOver();
         --left, --budget.dates) {
        const icaltimetype next = icalrecur_iterator_next(iterator.get());
        const auto local = writtenSeconds(next);
        if (!local)
            break; // the rule is at its end
        if (*local < start.local || !isOnListedDay(parts, *local) ||
            !isOnDayOfMonth(monthDays, next))
            continue;
        if (*local >= span.from && *local < span.to)
            starts.push_back(*local);
        if (++counted == count)
            break;
    }
    return starts;
}

} // namespace lumora::companion
