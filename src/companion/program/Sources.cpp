#include "companion/program/Sources.h"

#include "companion/focus/ActivityFocus.h"
#include "companion/parts/PartsJson.h"
#include "companion/spending/JournalSpending.h"

#include <QDateTime>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr std::chrono::minutes usualInterval{5};
constexpr std::chrono::hours spendingInterval{1};

/// Has a command print a part, which `read` takes.
template <typename Part>
AskForPart<Part>
askCommand(CommandLine command, Commands& commands, PartOutcome<Part> (*read)(QByteArrayView)) {
    return [command = std::move(command), &commands,
            read](std::chrono::sys_seconds, std::function<void(PartOutcome<Part>)> done) {
        commands.run(
            {.words = command},
            [read, done = std::move(done), name = command.first()](const CommandOutcome& printed) {
                if (!printed)
                    return done(tl::unexpected(printed.error()));
                done(read(*printed).map_error(
                    [&](const QString& fault) { return u"%1: %2"_s.arg(name, fault); }));
            });
    };
}

template <typename Part>
void addState(
    std::vector<NamedState>& states, const QString& name,
    const std::unique_ptr<KeptPart<Part>>& part) {
    if (part)
        states.push_back({name, part->state()});
}

template <typename Part>
bool isUnderWay(const std::unique_ptr<KeptPart<Part>>& part) {
    return part && part->isAsking();
}

} // namespace

Sources::Sources(ServiceSettings settings, SourceSurroundings with)
    : m_settings(std::move(settings))
    , m_with(std::move(with))
    , m_calendars(m_settings.agenda, {m_web, m_with.now, m_with.zone, m_with.bus})
    , m_log(m_settings.logPath, m_settings.dayEnds)
    , m_inbox(m_settings.capture, m_commands) {
    connect(&m_calendars, &Calendars::changed, this, &Sources::changed);
    connect(&m_log, &LogFile::changed, this, &Sources::changed);
    makeAskedParts();
    makeSpending();
}

Sources::~Sources() = default;

void Sources::makeAskedParts() {
    const auto tell = [this] { Q_EMIT changed(); };
    if (const auto& command = m_settings.habitsCommand)
        m_habits = std::make_unique<KeptPart<HabitsPart>>(
            askCommand(command->print, m_commands, &readHabits), usualInterval, tell);
    if (const auto& command = m_settings.choresCommand)
        m_chores = std::make_unique<KeptPart<ChoresPart>>(
            askCommand(command->print, m_commands, &readChores), usualInterval, tell);
    AskForPart<FocusPart> ask;
    if (const auto* command = std::get_if<CommandLine>(&m_settings.focus))
        ask = askCommand(*command, m_commands, &readFocus);
    else if (const auto* activity = std::get_if<ActivitySettings>(&m_settings.focus))
        ask = activityFocus(
            *activity, m_web, [this](std::chrono::sys_seconds at) { return dayStart(at); });
    if (ask)
        m_focus = std::make_unique<KeptPart<FocusPart>>(std::move(ask), usualInterval, tell);
}

void Sources::makeSpending() {
    AskForPart<SpendingPart> ask;
    if (const auto* command = std::get_if<CommandLine>(&m_settings.spending))
        ask = askCommand(*command, m_commands, &readSpending);
    const auto* journal = std::get_if<JournalSettings>(&m_settings.spending);
    if (journal)
        ask = journalSpending(*journal, m_commands, m_with.zone);
    if (!ask)
        return;
    m_spending = std::make_unique<KeptPart<SpendingPart>>(
        std::move(ask), spendingInterval, [this] { Q_EMIT changed(); });
    if (!journal)
        return;
    m_journal = std::make_unique<FileWatch>(journal->path);
    connect(m_journal.get(), &FileWatch::changed, this, [this] {
        m_journal->acknowledge();
        m_spending->refresh(now(), {});
    });
}

BriefingParts Sources::parts() {
    BriefingParts parts;
    parts.date = today();
    parts.events = m_calendars.today(now());
    parts.habits = m_habits ? m_habits->part().value_or(HabitsPart())
                            : habitsOn(habitDay(), m_settings.habits, m_log.totals());
    parts.chores = m_chores ? m_chores->part().value_or(ChoresPart())
                            : choresOn(habitDay(), m_settings.chores, m_log.totals());
    if (m_focus)
        parts.focus = m_focus->part().value_or(FocusPart());
    parts.spending = spendingPart();
    for (const NamedState& source : states()) {
        if (source.state.failingSince)
            parts.troubles.push_back({source.name, *source.state.failingSince});
    }
    return parts;
}

void Sources::refreshDue() {
    const auto at = now();
    m_calendars.refreshDue();
    if (m_habits)
        m_habits->refreshDue(at);
    if (m_chores)
        m_chores->refreshDue(at);
    if (m_focus)
        m_focus->refreshDue(at);
    const bool isNewDay = std::exchange(m_lastDay, today()) != today();
    if (m_spending && isNewDay)
        m_spending->refresh(at, {});
    else if (m_spending)
        m_spending->refreshDue(at);
}

bool Sources::isAsking() const {
    return m_calendars.isRefreshing() || isUnderWay(m_habits) || isUnderWay(m_chores) ||
           isUnderWay(m_focus) || isUnderWay(m_spending);
}

bool Sources::repeatsClick(const QString& id) {
    const auto last = std::exchange(m_lastClick, std::pair(id, now()));
    return last && last->first == id && std::chrono::abs(now() - last->second) < repeatTime;
}

std::vector<NamedState> Sources::states() const {
    std::vector<NamedState> states;
    addState(states, u"Habits"_s, m_habits);
    addState(states, u"Chores"_s, m_chores);
    addState(states, u"Focus"_s, m_focus);
    addState(states, u"Spending"_s, m_spending);
    return states;
}

std::optional<SpendingPart> Sources::spendingPart() const {
    auto part = m_spending ? m_spending->part() : std::nullopt;
    // A journal's figures are of the day they were asked for.
    if (part && m_journal && part->asOf != today().toString(Qt::ISODate))
        part->stale = true;
    return part;
}

QDate Sources::today() const {
    return dayOf(now(), moment().offset, {});
}

QDate Sources::habitDay() const {
    return dayOf(now(), moment().offset, m_settings.dayEnds);
}

LogMoment Sources::moment() const {
    return {now(), offsetAt(now(), m_with.zone())};
}

/// When the day of habits began that `at` belongs to.
std::chrono::sys_seconds Sources::dayStart(std::chrono::sys_seconds at) const {
    const QTimeZone zone = m_with.zone();
    const QDate day = dayOf(at, offsetAt(at, zone), m_settings.dayEnds);
    const QTime hour(int(m_settings.dayEnds.count()), 0);
    const QDateTime start = hour.hour() == 0 ? day.startOfDay(zone) : QDateTime(day, hour, zone);
    return std::chrono::sys_seconds(std::chrono::seconds(start.toSecsSinceEpoch()));
}

} // namespace lumora::companion
