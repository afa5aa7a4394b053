#include "fakes/FakeClock.h"
#include "fakes/FakePreferences.h"
#include "fakes/InvisibleCenter.h"
#include "reminders/NotificationService.h"
#include "support/Builders.h"

#include <QCoreApplication>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <random>
#include <set>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto lead = 300s;
constexpr auto horizon = 6h;
constexpr auto longestDelay = 10min;
constexpr auto polling = 10min;

Instant instantOf(const QDateTime& time) {
    return Instant(std::chrono::milliseconds(time.toMSecsSinceEpoch()));
}

struct Fetch {
    Instant time;
    QDate day; ///< by the local clock; only its meetings come with it
};

struct Sleep {
    Instant from;
    Instant to;
};

struct Week {
    const char* name;
    const char* zone;
    QDate monday; ///< of the week whose Sunday has the change
    unsigned seed;

    /// Without it the framework prints the bytes of the whole, gaps included.
    friend void PrintTo(const Week& shown, std::ostream* out) { *out << shown.name; }
};

/// One week of one person: meetings by the local clock, a briefing every ten minutes and after
/// every waking, and a machine that sleeps at random. What has to come of it is worked out from
/// the lists of meetings, fetches and sleeps alone.
class ReminderWeek : public testing::TestWithParam<Week> {
protected:
    void live() {
        planMeetings();
        const Instant end = instantOf(localMidnight(8));
        startPolling();
        while (clock.now() < end) {
            clock.advance(between(1min, chance(4) ? 20min : 5h));
            if (clock.now() >= end)
                break;
            const Instant asleep = clock.now();
            clock.suspend(between(10s, chance(3) ? 15min : 9h));
            sleeps.push_back({asleep, clock.now()});
            startPolling(); // as after every waking
        }
        m_polling.reset();
        clock.advance(1min); // whatever is still being fetched comes
    }

    /// When the meeting has to be reminded of; absent: not at all.
    std::optional<Instant> expected(const BriefEvent& meeting) const {
        const Instant start = *meeting.start;
        const Instant due = start - lead;
        const bool known = std::ranges::any_of(fetches, [&](const Fetch& fetch) {
            return fetch.time < due && start - fetch.time < horizon &&
                   fetch.day == localDay.at(start);
        });
        if (!known)
            return std::nullopt;
        for (const Sleep& sleep : sleeps) {
            if (sleep.from < due && due <= sleep.to)
                return sleep.to - due <= longestDelay ? std::optional(sleep.to) : std::nullopt;
        }
        return due;
    }

    std::vector<BriefEvent> meetings;
    QTimeZone zone{GetParam().zone};
    FakeClock clock{instantOf(localMidnight(0))};
    InvisibleCenter center{clock};
    std::vector<Sleep> sleeps;

private:
    QDateTime localMidnight(int day) const {
        return GetParam().monday.addDays(day).startOfDay(zone);
    }

    QDate dayOf(Instant instant) const { return toDateTime(instant).toTimeZone(zone).date(); }

    bool chance(int oneIn) { return std::uniform_int_distribution(1, oneIn)(random) == 1; }

    std::chrono::seconds between(std::chrono::seconds least, std::chrono::seconds most) {
        return std::chrono::seconds(
            std::uniform_int_distribution<qint64>(least.count(), most.count())(random));
    }

    /// Every five minutes there may be a meeting, also in the hour that is skipped or repeated.
    void planMeetings() {
        std::set<Instant> starts;
        for (int day = 0; day < 8; ++day) {
            for (int minute = 0; minute < 24 * 60; minute += 5) {
                const QDateTime start(
                    GetParam().monday.addDays(day), QTime(minute / 60, minute % 60), zone);
                if (chance(5))
                    starts.insert(instantOf(start));
                if (chance(5)) // reaches both passes of a repeated hour
                    starts.insert(instantOf(localMidnight(day)) + std::chrono::minutes(minute));
            }
        }
        for (const Instant start : starts) {
            localDay[start] = dayOf(start);
            meetings.push_back(makeEvent({.title = u"Meeting"_s, .start = start}));
            if (chance(10))
                meetings.push_back(makeEvent({.title = u"Other"_s, .start = start}));
        }
    }

    void startPolling() {
        fetch();
        m_polling = clock.every(polling, [this] { fetch(); });
    }

    std::vector<BriefEvent> meetingsOn(QDate day) const {
        std::vector<BriefEvent> found;
        std::ranges::copy_if(meetings, std::back_inserter(found), [&](const BriefEvent& event) {
            return localDay.at(*event.start) == day;
        });
        return found;
    }

    QCoro::Task<> fetch() {
        const auto latency = between(2s, 5s);
        co_await clock.wait(latency);
        const Fetch made{clock.now(), dayOf(clock.now())};
        fetches.push_back(made);
        std::vector<BriefEvent> today = meetingsOn(made.day);
        service.scheduleUpcoming(makeBriefing(std::move(today)));
    }

    std::mt19937 random{GetParam().seed};
    FakePreferences preferences;
    NotificationService service{center, preferences, clock};
    std::vector<Fetch> fetches;
    std::map<Instant, QDate> localDay; ///< of every start
    std::unique_ptr<RepeatingTimer> m_polling;
};

} // namespace

TEST_P(ReminderWeek, RemindsOfEveryMeetingThatWasNotSleptThroughOnce) {
    live();
    std::map<QString, std::vector<Instant>> wanted;
    for (const BriefEvent& meeting : meetings) {
        if (const auto when = expected(meeting))
            wanted[meeting.id()] = {*when};
    }
    // The week is worth its name: something is reminded of, something late, something not at all.
    EXPECT_GT(sleeps.size(), 20U);
    EXPECT_GT(wanted.size(), 100U);
    EXPECT_LT(wanted.size(), meetings.size());
    EXPECT_TRUE(std::ranges::any_of(meetings, [this](const BriefEvent& meeting) {
        return expected(meeting).value_or(Instant::min()) > *meeting.start - lead;
    }));
    EXPECT_EQ(center.shown, wanted);
}

INSTANTIATE_TEST_SUITE_P(
    All, ReminderWeek,
    testing::Values(
        Week{"BerlinSpring", "Europe/Berlin", QDate(2025, 3, 24), 1},
        Week{"BerlinAutumn", "Europe/Berlin", QDate(2025, 10, 20), 2},
        Week{"NewYorkSpring", "America/New_York", QDate(2025, 3, 3), 3},
        Week{"NewYorkAutumn", "America/New_York", QDate(2025, 10, 27), 4},
        Week{"BerlinSpringAgain", "Europe/Berlin", QDate(2025, 3, 24), 5},
        Week{"NewYorkAutumnAgain", "America/New_York", QDate(2025, 10, 27), 6}),
    [](const auto& tested) { return tested.param.name; });
