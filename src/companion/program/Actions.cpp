#include "companion/program/Actions.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

using Answer = std::function<void(HttpAnswer)>;

constexpr int noSuchThing = 404;
constexpr int notNow = 409;
constexpr std::chrono::seconds longestAct{10};

HttpAnswer okAnswer(QJsonObject members = {}) {
    members[u"ok"_s] = true;
    return {
        .status = 200,
        .body = QJsonDocument(members).toJson(QJsonDocument::Compact),
        .allow = {},
        .headOnly = false};
}

HttpAnswer declined(const QString& reason) {
    return okAnswer({{u"queued"_s, false}, {u"reason"_s, reason}});
}

template <typename Items>
auto itemWithId(const Items& items, const QString& id) {
    return std::ranges::find_if(items, [&](const auto& item) { return item.id == id; });
}

/// Writes an entry, unless the click was a repeated one.
HttpAnswer write(Sources& sources, const std::optional<LogEntry>& entry) {
    if (!entry)
        return okAnswer();
    const auto written = sources.log().append(*entry);
    return written ? okAnswer() : errorAnswer(notNow, written.error());
}

/// Tells the command of a click in the list that it printed, and has it print that anew.
template <typename Part, typename Items>
void tellCommand(
    Sources& sources, KeptPart<Part>& list, const Items& items, const CommandLine& act,
    const QString& id, Answer answer) {
    if (itemWithId(items, id) == items.end())
        return answer(errorAnswer(noSuchThing, u"There is no \"%1\""_s.arg(id)));
    if (act.isEmpty())
        return answer(errorAnswer(notNow, u"The command behind this list takes no clicks"_s));
    if (sources.repeatsClick(act.first() + u' ' + id))
        return answer(okAnswer());
    sources.commands().run(
        {act + QStringList(id), {}, longestAct},
        [&sources, &list, answer = std::move(answer)](const CommandOutcome& outcome) {
            if (!outcome)
                sources.forgetClick();
            if (!outcome)
                return answer(errorAnswer(notNow, outcome.error()));
            list.refresh(sources.now(), [answer] { answer(okAnswer()); });
        });
}

void toggleHabit(const ToggleHabit& toggle, Sources& sources, Answer answer) {
    const ServiceSettings& settings = sources.settings();
    if (auto* asked = sources.askedHabits())
        return tellCommand(
            sources, *asked, asked->part().value_or(HabitsPart()).items,
            settings.habitsCommand->act, toggle.id, std::move(answer));
    const auto habit = itemWithId(settings.habits, toggle.id);
    if (habit == settings.habits.end())
        return answer(errorAnswer(noSuchThing, u"There is no habit \"%1\""_s.arg(toggle.id)));
    answer(write(
        sources,
        toggleEntry(*habit, sources.habitDay(), sources.log().totals(), sources.moment())));
}

void finishChore(const FinishChore& finish, Sources& sources, Answer answer) {
    const ServiceSettings& settings = sources.settings();
    if (auto* asked = sources.askedChores())
        return tellCommand(
            sources, *asked, asked->part().value_or(ChoresPart()).top, settings.choresCommand->act,
            finish.id, std::move(answer));
    const auto chore = itemWithId(settings.chores, finish.id);
    if (chore == settings.chores.end())
        return answer(errorAnswer(noSuchThing, u"There is no chore \"%1\""_s.arg(finish.id)));
    answer(write(sources, doneEntry(*chore, sources.log().totals(), sources.moment())));
}

void captureThought(const Capture& capture, Sources& sources, Answer answer) {
    sources.inbox().keep(
        capture.text, sources.now(), sources.today(),
        [answer = std::move(answer)](const Inbox::Outcome& kept) {
            answer(kept ? okAnswer() : errorAnswer(notNow, kept.error()));
        });
}

void refreshSpending(Sources& sources, Answer answer) {
    auto* const spending = sources.spending();
    if (!spending)
        return answer(declined(u"No spending is set up"_s));
    spending->refresh(sources.now(), [spending, answer = std::move(answer)] {
        const auto& error = spending->state().error;
        answer(error ? declined(*error) : okAnswer({{u"queued"_s, true}}));
    });
}

} // namespace

void perform(
    const ServiceAction& action, Sources& sources, std::function<void(HttpAnswer)> answer) {
    if (const auto* toggle = std::get_if<ToggleHabit>(&action))
        toggleHabit(*toggle, sources, std::move(answer));
    else if (const auto* finish = std::get_if<FinishChore>(&action))
        finishChore(*finish, sources, std::move(answer));
    else if (const auto* capture = std::get_if<Capture>(&action))
        captureThought(*capture, sources, std::move(answer));
    else
        refreshSpending(sources, std::move(answer));
}

} // namespace lumora::companion
