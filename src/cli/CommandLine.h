#pragma once

#include "texts/StatusLine.h"

#include <QString>
#include <QStringList>

#include <tl/expected.hpp>

#include <optional>
#include <variant>

namespace lumora {

/// Start the program, or show the panel of the one that runs.
struct RunCommand {
    bool demo = false;
    QString scenario; ///< of the demo's service; empty: its own default

    bool operator==(const RunCommand&) const = default;
};

/// Print what the running program shows.
struct StatusCommand {
    StatusFormat format = StatusFormat::Text;
    bool follow = false; ///< and again after every change

    bool operator==(const StatusCommand&) const = default;
};

/// Have the running program show or hide one of its windows.
struct WindowCommand {
    enum class Action { Toggle, Show, Hide, Settings };
    Action action = Action::Toggle;

    bool operator==(const WindowCommand&) const = default;
};

/// Have the running program refresh, and wait for it.
struct RefreshCommand {
    bool operator==(const RefreshCommand&) const = default;
};

/// Have the running program open the link of the meeting that is on or comes next.
struct JoinCommand {
    bool operator==(const JoinCommand&) const = default;
};

/// Have the running program put a thought into the inbox.
struct CaptureCommand {
    std::optional<QString> text; ///< absent: what is on standard input

    bool operator==(const CaptureCommand&) const = default;
};

/// Have the running program toggle a habit, or report a chore as done; or list what there is.
struct ItemCommand {
    enum class Kind { Habit, Chore };
    Kind kind = Kind::Habit;
    std::optional<QString> idOrName; ///< absent: list them

    bool operator==(const ItemCommand&) const = default;
};

/// Print what is left of the day.
struct AgendaCommand {
    bool asJson = false;

    bool operator==(const AgendaCommand&) const = default;
};

/// End the running program.
struct QuitCommand {
    bool operator==(const QuitCommand&) const = default;
};

/// Read a briefing, and print what would be shown of it.
struct CheckCommand {
    QString source;             ///< a file, an address, or "-" for standard input
    std::optional<Instant> now; ///< absent: the real time

    bool operator==(const CheckCommand&) const = default;
};

/// Look at everything between the service and the screen, and say what is wrong with it.
struct DoctorCommand {
    bool asJson = false;

    bool operator==(const DoctorCommand&) const = default;
};

/// Print the usage.
struct HelpCommand {
    bool operator==(const HelpCommand&) const = default;
};

/// Print the version.
struct VersionCommand {
    bool operator==(const VersionCommand&) const = default;
};

using Command = std::variant<
    RunCommand, StatusCommand, WindowCommand, RefreshCommand, JoinCommand, CaptureCommand,
    ItemCommand, AgendaCommand, QuitCommand, CheckCommand, DoctorCommand, HelpCommand,
    VersionCommand>;

/// Reads the arguments after the program's name. The error is one line for the user.
tl::expected<Command, QString> parseCommandLine(const QStringList& arguments);

} // namespace lumora
