#pragma once

#include "texts/StatusLine.h"

#include <QString>
#include <QStringList>

#include <tl/expected.hpp>

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

/// End the running program.
struct QuitCommand {
    bool operator==(const QuitCommand&) const = default;
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
    RunCommand, StatusCommand, WindowCommand, RefreshCommand, QuitCommand, HelpCommand,
    VersionCommand>;

/// Reads the arguments after the program's name. The error is one line for the user.
tl::expected<Command, QString> parseCommandLine(const QStringList& arguments);

/// What `--help` prints.
QString usageText();

} // namespace lumora
