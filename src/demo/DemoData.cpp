#include "demo/DemoData.h"

#include "demo/DemoInstant.h"

namespace lumora {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

QList<DemoHabit> busyHabits() {
    return {
        {u"stretch"_s, u"Morning stretch"_s, 1, 1, 12},  {u"water"_s, u"Glass of water"_s, 2, 8, 0},
        {u"read"_s, u"Read twenty pages"_s, 0, 1, 4},    {u"walk"_s, u"Walk outside"_s, 0, 1, 0},
        {u"language"_s, u"Language lesson"_s, 0, 1, 31},
    };
}

QList<DemoHabit> finishedHabits() {
    auto habits = busyHabits();
    for (auto& habit : habits) {
        if (!habit.isDone()) {
            habit.count = habit.target;
            ++habit.streak;
        }
    }
    return habits;
}

QList<DemoChore> busyChores() {
    return {
        {u"kettle"_s, u"Descale the kettle"_s, u"Kitchen"_s, 5},
        {u"plants"_s, u"Water the plants"_s, u"Living room"_s, 1},
        {u"bins"_s, u"Take out the recycling"_s, u"Kitchen"_s, 0},
        {u"drain"_s, u"Clear the balcony drain"_s, u"Balcony"_s, std::nullopt},
        {u"sheets"_s, u"Change the sheets"_s, u"Bedroom"_s, 0},
        {u"mirror"_s, u"Wipe the mirrors"_s, u"Bathroom"_s, std::nullopt},
    };
}

QList<DemoBucket> buckets() {
    return {
        {u"groceries"_s, u"Groceries"_s, u"🛒"_s, u"#34A853"_s, 412.35},
        {u"home"_s, u"Home"_s, u"🏠"_s, u"#1E90FF"_s, 355.00},
        {u"eating-out"_s, u"Eating out"_s, u"🍜"_s, u"#F59E0B"_s, 218.40},
        {u"transport"_s, u"Transport"_s, u"🚲"_s, u"#8B5CF6"_s, 164.90},
        {u"health"_s, u"Health"_s, u"🩺"_s, u"#EF4444"_s, 121.60},
        {u"fun"_s, u"Books and music"_s, u"🎧"_s, u"#14B8A6"_s, 96.50},
    };
}

DemoSpending spending(double sameDayLastMonth, Instant generated, const QTimeZone& zone) {
    DemoSpending result;
    result.monthToDate = 1483.75;
    result.sameDayLastMonth = sameDayLastMonth;
    result.top = buckets();
    result.asOf = demoDate(generated, zone).toString(Qt::ISODate);
    result.generatedAt = demoStamp(generated);
    return result;
}

} // namespace

DemoData initialDemoData(DemoScenario scenario, Instant dayFrom, const QTimeZone& zone) {
    DemoData data;
    switch (scenario) {
    case DemoScenario::Empty:
        break;
    case DemoScenario::Quiet:
        data.habits = finishedHabits();
        data.productiveShare = 0.81;
        data.spending = spending(1561.84, dayFrom, zone);
        break;
    default:
        data.habits = busyHabits();
        data.chores = busyChores();
        data.productiveShare = 0.42;
        data.spending = spending(1250.00, dayFrom - 24h, zone);
        data.spending->stale = true;
        break;
    }
    return data;
}

} // namespace lumora
