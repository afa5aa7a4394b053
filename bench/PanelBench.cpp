// What the panel costs inside the program: opening it with more and more rows, and with longer and
// longer texts; what the status item shows of these; and refreshes with and without something new.
// Drawn into memory, so that no X server is in the figures.

#include "support/Fixtures.h"
#include "support/PanelFixture.h"
#include "texts/StatusPresentation.h"

#include <QApplication>
#include <QPixmap>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

Briefing dayWithHabits(qint64 count) {
    Briefing briefing = tests::fullDay();
    briefing.habits = {.done = 0, .total = count, .items = {}};
    for (qint64 i = 0; i < count; ++i)
        briefing.habits.items.push_back(
            {u"habit-%1"_s.arg(i), u"Read page %1"_s.arg(i), false, 0, 1, i % 40});
    return briefing;
}

/// A day whose texts all have as many letters, in a script that takes some work.
Briefing dayWithTexts(qsizetype letters) {
    const QString title = u"ประชุมวางแผน"_s.repeated(letters / 12 + 1).first(letters);
    Briefing briefing = tests::fullDay();
    for (BriefEvent& event : briefing.eventsToday) {
        event.title = title;
        event.location = title;
    }
    for (Habit& habit : briefing.habits.items)
        habit.name = title;
    for (Chore& chore : briefing.chores.top)
        chore.name = title;
    return briefing;
}

/// Lays the panel out and paints as much of it as a screen shows: the rest is scrolled to.
void draw(MenuBarView& panel) {
    constexpr int screenHeight = 1000;
    panel.resize(panel.sizeHint());
    const int height = std::min(panel.height(), screenHeight);
    const QPixmap picture = panel.grab({0, 0, panel.width(), height});
    benchmark::DoNotOptimize(picture.cacheKey());
}

void open(benchmark::State& state, const Briefing& briefing) {
    for ([[maybe_unused]] auto _ : state) {
        tests::ViewHarness panel;
        panel.view.hide();
        panel.lastGood = briefing;
        panel.render();
        draw(panel.view);
    }
}

void openPanel(benchmark::State& state) {
    open(state, dayWithHabits(state.range(0)));
}

/// With what is searched, measured and drawn of a text bounded, a million letters cost as much as
/// a line of them does.
void openPanelOfTexts(benchmark::State& state) {
    open(state, dayWithTexts(state.range(0)));
}

void makeStatusItem(benchmark::State& state) {
    const std::optional<Briefing> briefing = dayWithTexts(state.range(0));
    const LoadState loaded = LoadState::loaded(*briefing);
    for ([[maybe_unused]] auto _ : state) {
        const auto content = statusItemContent({
            .lastGood = briefing,
            .state = loaded,
            .lastUpdated = tests::FakeClock::defaultStart,
            .menuBarAmbient = {},
            .now = tests::FakeClock::defaultStart,
        });
        benchmark::DoNotOptimize(content.menu.size());
    }
}

/// A panel that is on the screen gets the briefing's `versions` in turn.
void refresh(benchmark::State& state, const std::vector<Briefing>& versions) {
    tests::ViewHarness panel;
    panel.lastGood = versions.front();
    panel.render();
    panel.view.show();
    QApplication::processEvents();
    size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        panel.lastGood = versions[++next % versions.size()];
        panel.render();
        QApplication::processEvents(); // whatever is to be painted
    }
}

void refreshWithoutChange(benchmark::State& state) {
    refresh(state, {dayWithHabits(state.range(0))});
}

void refreshWithChange(benchmark::State& state) {
    const Briefing before = dayWithHabits(state.range(0));
    Briefing after = before;
    after.habits.items.front().streak += 1;
    refresh(state, {before, after});
}

} // namespace

BENCHMARK(openPanel)->ArgName("habits")->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);
BENCHMARK(openPanelOfTexts)->ArgName("letters")->Arg(40)->Arg(1'000'000);
BENCHMARK(makeStatusItem)->ArgName("letters")->Arg(1000)->Arg(1'000'000);
BENCHMARK(refreshWithoutChange)->ArgName("habits")->Arg(10);
BENCHMARK(refreshWithChange)->ArgName("habits")->Arg(10);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
