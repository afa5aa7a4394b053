#include "briefing/ActionKeys.h"
#include "pictures/PanelStage.h"
#include "platform/AppStorageBacked.h"
#include "support/Builders.h"
#include "support/ViewHarness.h"
#include "ui/panel/CaptureField.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

const QString showSpending = u"Show month-to-date"_s;
const QString outage = u"Could not connect to the server."_s;

template <typename Prepare>
PictureState panel(const std::string& name, Prepare prepare) {
    return {
        .name = "panel_" + name,
        .draw =
            [prepare](const Look& look) {
                PanelStage stage(look);
                prepare(stage);
                return stage.picture();
            },
    };
}

PictureState inEveryLook(PictureState state) {
    state.looks = Looks::All;
    return state;
}

PictureState inArabic(PictureState state) {
    state.inArabic = true;
    return state;
}

void reveal(PanelStage& stage, const Briefing& briefing) {
    stage.open(briefing);
    QTest::mouseClick(&stage.button(showSpending), Qt::LeftButton);
    settle();
}

Briefing longTexts() {
    Briefing briefing = pictureDay();
    briefing.eventsToday[1].title = u"Quarterly planning with everybody who works on the panel"_s;
    briefing.eventsToday[1].location = u"The large room on the second floor, behind the library"_s;
    briefing.habits.items[0].name = u"Read a chapter of something that is not about work at all"_s;
    briefing.habits.items[2].name = u"Go for a run around both of the lakes, whatever weather"_s;
    briefing.chores.top[0].name = u"Water the plants on the balcony, in the hall and upstairs"_s;
    briefing.spending->top[0].label = u"Groceries, household goods and everything else"_s;
    return briefing;
}

Briefing emojiTitles() {
    Briefing briefing = pictureDay();
    briefing.eventsToday[1].title = u"🎉 Launch party 🎉"_s;
    briefing.habits.items[0].name = u"🏠 Tidy up"_s;
    briefing.habits.items[2].name = u"🔥 Run"_s;
    briefing.chores.top[0].name = u"🛒"_s;
    return briefing;
}

Briefing manyEvents() {
    Briefing briefing = pictureDay();
    for (int i = 0; i < 12; ++i)
        briefing.eventsToday.push_back(makeEvent(
            {.title = u"Call %1"_s.arg(i + 1),
             .start = FakeClock::defaultStart + std::chrono::minutes(300 + 15 * i)}));
    return briefing;
}

Briefing allDone() {
    Briefing briefing = pictureDay();
    briefing.habits.done = briefing.habits.total;
    for (Habit& habit : briefing.habits.items)
        habit.done = true;
    return briefing;
}

void foldEverything(PanelStage& stage) {
    for (const auto& key :
         {PreferenceKeys::eventsCollapsed, PreferenceKeys::habitsCollapsed,
          PreferenceKeys::choresCollapsed, PreferenceKeys::spendingCollapsed})
        stage.preferences.set(key.name, preferenceText(true));
}

std::vector<PictureState> messageStates() {
    return {
        panel(
            "loading",
            [](PanelStage& stage) {
                stage.state = LoadState::loading();
                stage.open();
            }),
        panel(
            "failed",
            [](PanelStage& stage) {
                stage.state = LoadState::failed(outage);
                stage.open();
            }),
        panel(
            "not_configured",
            [](PanelStage& stage) {
                stage.state = LoadState::failed(u"No API token set — open Settings to add one."_s);
                stage.isConfigured = false;
                stage.hasDashboard = false;
                stage.open();
            }),
        panel(
            "failed_with_briefing",
            [](PanelStage& stage) {
                stage.state = LoadState::failed(outage);
                stage.actionError =
                    u"The service has refused to mark this habit: it was changed elsewhere, by "
                    "somebody else, after the briefing had been made."_s;
                stage.open(pictureDay());
            }),
    };
}

std::vector<PictureState> dayStates() {
    return {
        panel("empty_day", [](PanelStage& stage) { stage.open(makeBriefing()); }),
        panel("normal_day", [](PanelStage& stage) { stage.open(pictureDay()); }),
        panel("habits_all_done", [](PanelStage& stage) { stage.open(allDone()); }),
        panel("many_events", [](PanelStage& stage) { stage.open(manyEvents()); }),
        panel(
            "folded",
            [](PanelStage& stage) {
                reveal(stage, pictureDay());
                foldEverything(stage);
            }),
        panel("long_texts", [](PanelStage& stage) { reveal(stage, longTexts()); }),
        panel("arabic_titles", [](PanelStage& stage) { reveal(stage, arabicDay()); }),
        inArabic(panel("arabic_day", [](PanelStage& stage) { reveal(stage, arabicDay()); })),
        panel("emoji_titles", [](PanelStage& stage) { stage.open(emojiTitles()); }),
        panel(
            "busy_rows",
            [](PanelStage& stage) {
                stage.pending = {ActionKeys::habit(u"read"_s), ActionKeys::chore(u"plants"_s)};
                stage.open(pictureDay());
            }),
    };
}

std::vector<PictureState> spendingStates() {
    return {
        inEveryLook(
            panel("spending_revealed", [](PanelStage& stage) { reveal(stage, pictureDay()); })),
        panel(
            "spending_stale_and_falling",
            [](PanelStage& stage) {
                Briefing briefing = pictureDay();
                briefing.spending->stale = true;
                briefing.spending->deltaFraction = -0.08;
                reveal(stage, briefing);
            }),
        panel(
            "spending_refreshing",
            [](PanelStage& stage) {
                reveal(stage, pictureDay());
                stage.pending = {ActionKeys::spending};
                stage.open();
            }),
    };
}

std::vector<PictureState> windowStates() {
    return {
        panel(
            "floating",
            [](PanelStage& stage) {
                stage.compositing.setActive(true);
                stage.open(makeBriefing());
            }),
        panel(
            "scrolled",
            [](PanelStage& stage) {
                stage.screen.available.setHeight(300);
                stage.open(pictureDay());
                stage.focus(stage.button(u"Habits"_s));
            }),
        panel(
            "floating_scrolled",
            [](PanelStage& stage) {
                stage.compositing.setActive(true);
                stage.screen.available.setHeight(300);
                stage.open(pictureDay());
            }),
    };
}

} // namespace

std::vector<PictureState> panelStates() {
    std::vector<PictureState> states;
    for (auto&& some : {messageStates(), dayStates(), spendingStates(), windowStates()})
        states.insert(states.end(), some.begin(), some.end());
    return states;
}

} // namespace lumora::tests
