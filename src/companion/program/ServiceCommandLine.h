#pragma once

#include <QString>
#include <QStringList>

#include <tl/expected.hpp>

#include <utility>
#include <variant>

namespace lumora::companion {

/// Write a first configuration.
struct InitCommand {
    QStringList calendars;                    ///< addresses, files and folders
    QStringList habits;                       ///< their names
    QList<std::pair<QString, qint64>> chores; ///< their names, and days from one to the next
    QString inbox;                            ///< empty: none
    QString journal;                          ///< empty: none
    quint16 port = 0;                         ///< 0: the usual one
    bool gnome = false;
    bool connect = false;

    bool operator==(const InitCommand&) const = default;
};

/// Tell Lumora where the service is, and its token.
struct ConnectCommand {
    bool operator==(const ConnectCommand&) const = default;
};

/// Say how each source stands.
struct CheckCommand {
    bool operator==(const CheckCommand&) const = default;
};

/// Serve until the process is told to end.
struct RunCommand {
    bool operator==(const RunCommand&) const = default;
};

struct HelpCommand {
    bool operator==(const HelpCommand&) const = default;
};

struct VersionCommand {
    bool operator==(const VersionCommand&) const = default;
};

using ServiceCommand = std::variant<
    InitCommand, ConnectCommand, CheckCommand, RunCommand, HelpCommand, VersionCommand>;

/// Reads the arguments behind the program's name. The error is one line for people.
[[nodiscard]] tl::expected<ServiceCommand, QString>
parseServiceCommand(const QStringList& arguments);

/// What `--help` prints.
[[nodiscard]] QString serviceUsage();

} // namespace lumora::companion
