#pragma once

#include "briefing/LoadState.h"

#include <QString>

#include <array>
#include <optional>
#include <variant>

namespace lumora {

/// The figure the label shows while no meeting takes it over.
enum class MenuBarAmbient { Habits, Focus, Chores, None };

/// Every choice, in the order they are offered.
inline constexpr std::array menuBarAmbientCases{
    MenuBarAmbient::Habits,
    MenuBarAmbient::Focus,
    MenuBarAmbient::Chores,
    MenuBarAmbient::None,
};

/// The text the choice is stored as: "habits", "focus", "chores" or "none".
QString rawValue(MenuBarAmbient ambient);

/// The choice stored as `raw`; habits for any other text.
MenuBarAmbient menuBarAmbientFromRaw(const QString& raw);

/// What the choice is called in the settings.
QString title(MenuBarAmbient ambient);

/// What the status area shows, as a value: one symbol and usually a short text. A meeting near or
/// in progress takes it over; otherwise it is the ambient figure the user chose. Pure: it knows
/// nothing of how a status area draws.
class MenuBarLabel {
public:
    /// A meeting is in progress.
    struct Now {
        QString title; ///< shortened

        bool operator==(const Now&) const = default;
    };

    /// A meeting starts within half an hour.
    struct Countdown {
        QString title; ///< shortened
        QString label; ///< how long until it starts, e.g. "12m"

        bool operator==(const Countdown&) const = default;
    };

    /// Habit progress.
    struct Habits {
        qint64 done = 0;
        qint64 total = 0;

        bool operator==(const Habits&) const = default;
    };

    /// The productive share of the tracked time, a fraction of 1.
    struct Focus {
        double share = 0;

        bool operator==(const Focus&) const = default;
    };

    /// Chores due.
    struct Chores {
        qint64 count = 0;

        bool operator==(const Chores&) const = default;
    };

    /// The first load failed, and no briefing has ever been there.
    struct Error {
        bool operator==(const Error&) const = default;
    };

    /// No briefing yet.
    struct Loading {
        bool operator==(const Loading&) const = default;
    };

    /// Nothing to show.
    struct Idle {
        bool operator==(const Idle&) const = default;
    };

    using Mode = std::variant<Now, Countdown, Habits, Focus, Chores, Error, Loading, Idle>;

    /// The meeting that takes the label over at `now`: one that starts within half an hour, else
    /// one in progress; absent when there is neither.
    static std::optional<BriefEvent> meeting(const Briefing& briefing, Instant now);

    /// What to show at `now`. `lastGood` is the last briefing that loaded, `state` how the latest
    /// load went, `menuBarAmbient` the stored preference (see MenuBarAmbient).
    static Mode mode(
        const std::optional<Briefing>& lastGood, const LoadState& state, Instant now,
        const QString& menuBarAmbient);

    /// The mode's name for other programs: "now", "countdown", "habits", "focus", "chores",
    /// "error", "loading" or "idle".
    static QString modeName(const Mode& mode);

    /// The name of the mode's symbol.
    static QString iconName(const Mode& mode);

    /// The text beside the symbol; absent when there is none.
    static std::optional<QString> text(const Mode& mode);

    /// What most of the text comes down to in at most four characters, e.g. "12m", "2/5" or "42%";
    /// absent when there is nothing as short, as for a meeting in progress.
    static std::optional<QString> shortText(const Mode& mode);
};

} // namespace lumora
