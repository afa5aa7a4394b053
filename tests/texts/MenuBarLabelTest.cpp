#include "texts/MenuBarLabel.h"

#include "support/Builders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

const Instant labelNow = at("2025-03-04T10:00:00Z");

BriefEvent
meeting(const QString& title, std::chrono::microseconds start, std::chrono::microseconds end) {
    return makeEvent({.title = title, .start = labelNow + start, .end = labelNow + end});
}

MenuBarLabel::Mode modeOf(const Briefing& briefing, const QString& ambient = u"habits"_s) {
    return MenuBarLabel::mode(briefing, LoadState::loaded(briefing), labelNow, ambient);
}

MenuBarLabel::Mode modeOfEvents(std::vector<BriefEvent> events) {
    return modeOf(makeBriefing(std::move(events)));
}

Briefing withHabits(qint64 done, qint64 total) {
    auto briefing = makeBriefing();
    briefing.habits.done = done;
    briefing.habits.total = total;
    return briefing;
}

void expectLabel(
    const MenuBarLabel::Mode& mode, const QString& name, const QString& icon,
    const std::optional<QString>& text) {
    EXPECT_EQ(MenuBarLabel::modeName(mode), name);
    EXPECT_EQ(MenuBarLabel::iconName(mode), icon);
    EXPECT_EQ(MenuBarLabel::text(mode), text);
}

std::vector<QString> all(QString (*property)(MenuBarAmbient)) {
    std::vector<QString> result;
    for (const auto ambient : menuBarAmbientCases)
        result.push_back(property(ambient));
    return result;
}

} // namespace

TEST(MenuBarAmbient, CasesHaveRawValuesAndTitlesInOrder) {
    EXPECT_THAT(all(rawValue), ElementsAre(u"habits"_s, u"focus"_s, u"chores"_s, u"none"_s));
    EXPECT_THAT(
        all(title), ElementsAre(u"Habit progress"_s, u"Focus %"_s, u"Chores due"_s, u"Nothing"_s));
}

TEST(MenuBarAmbient, RawValuesReadBack) {
    for (const auto ambient : menuBarAmbientCases)
        EXPECT_EQ(menuBarAmbientFromRaw(rawValue(ambient)), ambient);
}

TEST(MenuBarAmbient, AnyOtherTextIsHabits) {
    for (const auto& raw : {u"weather"_s, u""_s, u"Focus"_s, u" focus"_s, u"chores "_s, QString()})
        EXPECT_EQ(menuBarAmbientFromRaw(raw), MenuBarAmbient::Habits);
}

TEST(MenuBarLabel, LoadsUntilThereIsABriefing) {
    for (const auto& state : {LoadState(), LoadState::loading()})
        expectLabel(
            MenuBarLabel::mode(std::nullopt, state, labelNow, u"habits"_s), u"loading"_s,
            u"calendar"_s, std::nullopt);
}

TEST(MenuBarLabel, AFailedFirstLoadIsAnError) {
    expectLabel(
        MenuBarLabel::mode(std::nullopt, LoadState::failed(u"M"_s), labelNow, u"habits"_s),
        u"error"_s, u"calendar.badge.exclamationmark"_s, std::nullopt);
}

TEST(MenuBarLabel, LaterFailuresChangeNothing) {
    const auto briefing = withHabits(2, 5);
    for (const auto& state : {LoadState::failed(u"M"_s), LoadState::loading(), LoadState()})
        EXPECT_EQ(MenuBarLabel::mode(briefing, state, labelNow, u"habits"_s), modeOf(briefing));
}

TEST(MenuBarLabel, CountsDownToAMeetingWithinHalfAnHour) {
    expectLabel(
        modeOfEvents({meeting(u"Standup"_s, 12min, 30min)}), u"countdown"_s,
        u"calendar.badge.clock"_s, u"Standup · 12m"_s);
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, 30min, 1h)}),
        MenuBarLabel::Mode(MenuBarLabel::Countdown{u"A"_s, u"30m"_s}));
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, 59s, 1h)}),
        MenuBarLabel::Mode(MenuBarLabel::Countdown{u"A"_s, u"1m"_s}));
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, 30s, 1h)}),
        MenuBarLabel::Mode(MenuBarLabel::Countdown{u"A"_s, u"1m"_s}));
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, 500ms, 1h)}),
        MenuBarLabel::Mode(MenuBarLabel::Countdown{u"A"_s, u"now"_s}));
}

TEST(MenuBarLabel, FurtherMeetingsAreNotCountedDown) {
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, 30min + 1s, 1h)}), MenuBarLabel::Mode(MenuBarLabel::Idle{}));
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, 30min + 1us, 1h)}), MenuBarLabel::Mode(MenuBarLabel::Idle{}));
}

TEST(MenuBarLabel, CountsDownToTheFirstOfSeveral) {
    EXPECT_EQ(
        modeOfEvents(
            {meeting(u"C"_s, 20min, 1h), meeting(u"A"_s, 10min, 1h), meeting(u"B"_s, 10min, 1h)}),
        MenuBarLabel::Mode(MenuBarLabel::Countdown{u"A"_s, u"10m"_s}));
}

TEST(MenuBarLabel, AtItsStartAMeetingIsInProgress) {
    expectLabel(
        modeOfEvents({meeting(u"Standup"_s, 0s, 30min)}), u"now"_s, u"record.circle"_s,
        u"Standup"_s);
}

TEST(MenuBarLabel, ANearMeetingGoesBeforeOneInProgress) {
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, -1h, 1h), meeting(u"B"_s, 30min, 1h)}),
        MenuBarLabel::Mode(MenuBarLabel::Countdown{u"B"_s, u"30m"_s}));
}

TEST(MenuBarLabel, AFarMeetingDoesNotHideOneInProgress) {
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, -1h, 1h), meeting(u"B"_s, 31min, 1h)}),
        MenuBarLabel::Mode(MenuBarLabel::Now{u"A"_s}));
}

TEST(MenuBarLabel, OfThoseInProgressTheOneThatEndsFirst) {
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, -1h, 30min), meeting(u"B"_s, -30min, 15min)}),
        MenuBarLabel::Mode(MenuBarLabel::Now{u"B"_s}));
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, -30min, 15min), meeting(u"B"_s, -1h, 15min)}),
        MenuBarLabel::Mode(MenuBarLabel::Now{u"B"_s}));
}

TEST(MenuBarLabel, BackgroundBlocksAndAllDayEntriesDoNotCount) {
    const auto allDay =
        makeEvent({.start = labelNow + 10min, .end = labelNow + 40min, .allDay = true});
    EXPECT_EQ(
        modeOfEvents({meeting(u"A"_s, -1h, 5h), meeting(u"B"_s, 10min, 7h), allDay}),
        MenuBarLabel::Mode(MenuBarLabel::Idle{}));
}

TEST(MenuBarLabel, TheProducersNextEventDoesNotCount) {
    auto briefing = makeBriefing();
    briefing.nextEvent = meeting(u"A"_s, 10min, 20min);
    EXPECT_EQ(modeOf(briefing), MenuBarLabel::Mode(MenuBarLabel::Idle{}));
}

TEST(MenuBarLabel, TitlesAreShortened) {
    EXPECT_EQ(
        MenuBarLabel::text(modeOfEvents({meeting(u"Quarterly planning review"_s, 5min, 1h)})),
        u"Quarterly planni… · 5m"_s);
    EXPECT_EQ(
        MenuBarLabel::text(modeOfEvents({meeting(u" Daily standup call"_s, -5min, 1h)})),
        u"Daily standup…"_s);
}

TEST(MenuBarLabel, HabitProgress) {
    expectLabel(modeOf(withHabits(2, 5)), u"habits"_s, u"checkmark.circle"_s, u"2/5"_s);
    expectLabel(modeOf(withHabits(3, 3)), u"habits"_s, u"checkmark.circle.fill"_s, u"3/3"_s);
    expectLabel(modeOf(withHabits(4, 3)), u"habits"_s, u"checkmark.circle"_s, u"4/3"_s);
    expectLabel(
        modeOf(withHabits(1000, 1234567)), u"habits"_s, u"checkmark.circle"_s, u"1000/1234567"_s);
}

TEST(MenuBarLabel, NoHabitsNoProgress) {
    for (const qint64 total : {qint64(0), qint64(-1)})
        expectLabel(modeOf(withHabits(0, total)), u"idle"_s, u"calendar"_s, std::nullopt);
}

TEST(MenuBarLabel, FocusShare) {
    auto briefing = withHabits(2, 5);
    expectLabel(modeOf(briefing, u"focus"_s), u"idle"_s, u"calendar"_s, std::nullopt);
    briefing.focus.productiveShare = 0.42;
    expectLabel(modeOf(briefing, u"focus"_s), u"focus"_s, u"brain.head.profile"_s, u"42%"_s);
    briefing.focus.productiveShare = 0.005;
    EXPECT_EQ(MenuBarLabel::text(modeOf(briefing, u"focus"_s)), u"1%"_s);
    briefing.focus.productiveShare = 0;
    EXPECT_EQ(MenuBarLabel::text(modeOf(briefing, u"focus"_s)), u"0%"_s);
}

TEST(MenuBarLabel, ChoresDue) {
    auto briefing = withHabits(2, 5);
    expectLabel(modeOf(briefing, u"chores"_s), u"idle"_s, u"calendar"_s, std::nullopt);
    briefing.chores.count = 1;
    expectLabel(modeOf(briefing, u"chores"_s), u"chores"_s, u"checklist"_s, u"1"_s);
    briefing.chores.count = std::numeric_limits<qint64>::max();
    EXPECT_EQ(MenuBarLabel::text(modeOf(briefing, u"chores"_s)), u"9223372036854775807"_s);
}

TEST(MenuBarLabel, ShortTextsHaveAtMostFourCharacters) {
    using Label = MenuBarLabel;
    EXPECT_EQ(Label::shortText(Label::Countdown{u"Standup"_s, u"12m"_s}), u"12m"_s);
    EXPECT_EQ(Label::shortText(Label::Countdown{u"Standup"_s, u"now"_s}), u"now"_s);
    EXPECT_EQ(Label::shortText(Label::Habits{2, 5}), u"2/5"_s);
    EXPECT_EQ(Label::shortText(Label::Habits{3, 12}), u"3/12"_s);
    EXPECT_EQ(Label::shortText(Label::Habits{10, 12}), std::nullopt);
    EXPECT_EQ(Label::shortText(Label::Focus{0.42}), u"42%"_s);
    EXPECT_EQ(Label::shortText(Label::Focus{1}), u"100%"_s);
    EXPECT_EQ(Label::shortText(Label::Chores{3}), u"3"_s);
    EXPECT_EQ(Label::shortText(Label::Chores{9999}), u"9999"_s);
    EXPECT_EQ(Label::shortText(Label::Chores{10'000}), std::nullopt);
}

TEST(MenuBarLabel, WithoutAFigureThereIsNoShortText) {
    using Label = MenuBarLabel;
    EXPECT_EQ(Label::shortText(Label::Now{u"1:1"_s}), std::nullopt);
    EXPECT_EQ(Label::shortText(Label::Error{}), std::nullopt);
    EXPECT_EQ(Label::shortText(Label::Loading{}), std::nullopt);
    EXPECT_EQ(Label::shortText(Label::Idle{}), std::nullopt);
}

TEST(MenuBarLabel, NothingWhenNothingIsWanted) {
    auto briefing = withHabits(2, 5);
    briefing.chores.count = 1;
    briefing.focus.productiveShare = 0.5;
    expectLabel(modeOf(briefing, u"none"_s), u"idle"_s, u"calendar"_s, std::nullopt);
}

TEST(MenuBarLabel, AnUnknownPreferenceActsAsHabits) {
    const auto briefing = withHabits(2, 5);
    for (const auto& raw : {u"weather"_s, u""_s, u"Focus"_s})
        EXPECT_EQ(modeOf(briefing, raw), modeOf(briefing, u"habits"_s));
}

TEST(MenuBarLabel, AMeetingGoesBeforeTheAmbientFigure) {
    auto briefing = withHabits(2, 5);
    briefing.eventsToday = {meeting(u"A"_s, 10min, 1h)};
    for (const auto& raw : {u"habits"_s, u"none"_s})
        EXPECT_EQ(
            modeOf(briefing, raw), MenuBarLabel::Mode(MenuBarLabel::Countdown{u"A"_s, u"10m"_s}));
}
