#pragma once

#include "companion/briefing/BriefingText.h"
#include "companion/calendars/Calendars.h"
#include "companion/capture/Inbox.h"
#include "companion/fetching/Commands.h"
#include "companion/fetching/CurlWeb.h"
#include "companion/log/HabitsAndChores.h"
#include "companion/log/LogFile.h"
#include "companion/parts/Asking.h"
#include "companion/settings/ServiceSettings.h"
#include "companion/watching/FileWatch.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace lumora::companion {

/// What the sources need from outside.
struct SourceSurroundings {
    std::function<std::chrono::sys_seconds()> now;
    std::function<QTimeZone()> zone; ///< where the user is; asked anew each time
    QDBusConnection bus;             ///< where GNOME's calendars are found
};

/// How a source other than a calendar stands, for people.
struct NamedState {
    QString name; ///< "Spending"
    SourceState state;
};

/// Everything that a briefing is made of, as the configuration has it. Lives in one thread with an
/// event loop. A source that fails keeps its last good part, and touches no other.
class Sources final : public QObject {
    Q_OBJECT

public:
    Sources(ServiceSettings settings, SourceSurroundings with);
    ~Sources() override;

    [[nodiscard]] const ServiceSettings& settings() const { return m_settings; }

    [[nodiscard]] std::chrono::sys_seconds now() const { return m_with.now(); }

    /// The parts as they are now, from what is in memory.
    [[nodiscard]] BriefingParts parts();

    /// Asks whatever is due to be asked, and reads files that have changed. To be called at the
    /// start and then every minute.
    void refreshDue();

    /// Whether anything is still under way that refreshDue() began.
    [[nodiscard]] bool isAsking() const;

    [[nodiscard]] std::vector<CalendarState> calendarStates() { return m_calendars.states(now()); }

    /// Of all other sources that the configuration has.
    [[nodiscard]] std::vector<NamedState> states() const;

    [[nodiscard]] LogFile& log() { return m_log; }

    [[nodiscard]] Inbox& inbox() { return m_inbox; }

    [[nodiscard]] Commands& commands() { return m_commands; }

    /// Whether a command was told of the same click less than two seconds ago: the same one, whose
    /// answer got lost. If not, this is the last one from now on.
    [[nodiscard]] bool repeatsClick(const QString& id);

    /// The last click came to nothing, and may be repeated at once.
    void forgetClick() { m_lastClick.reset(); }

    /// Those that a command or a server is asked for; null: the configuration has none.
    [[nodiscard]] KeptPart<HabitsPart>* askedHabits() { return m_habits.get(); }

    [[nodiscard]] KeptPart<ChoresPart>* askedChores() { return m_chores.get(); }

    [[nodiscard]] KeptPart<SpendingPart>* spending() { return m_spending.get(); }

    /// The day it is where the user is.
    [[nodiscard]] QDate today() const;

    /// The day of habits, which may end behind midnight.
    [[nodiscard]] QDate habitDay() const;

    /// Now, and the offset from UTC.
    [[nodiscard]] LogMoment moment() const;

Q_SIGNALS:
    /// parts() may answer otherwise than before.
    void changed();

private:
    void makeAskedParts();
    void makeSpending();
    [[nodiscard]] std::optional<SpendingPart> spendingPart() const;
    [[nodiscard]] std::chrono::sys_seconds dayStart(std::chrono::sys_seconds at) const;

    const ServiceSettings m_settings;
    const SourceSurroundings m_with;
    Commands m_commands;
    CurlWeb m_web;
    Calendars m_calendars;
    LogFile m_log;
    Inbox m_inbox;
    std::unique_ptr<KeptPart<HabitsPart>> m_habits;
    std::unique_ptr<KeptPart<ChoresPart>> m_chores;
    std::unique_ptr<KeptPart<FocusPart>> m_focus;
    std::unique_ptr<KeptPart<SpendingPart>> m_spending;
    std::unique_ptr<FileWatch> m_journal;
    std::optional<std::pair<QString, std::chrono::sys_seconds>> m_lastClick; ///< told to a command
    QDate m_lastDay; ///< on which something was due the last time
};

} // namespace lumora::companion
