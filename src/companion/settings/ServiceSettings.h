#pragma once

#include "companion/calendars/CalendarSettings.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <chrono>
#include <optional>
#include <variant>
#include <vector>

namespace lumora::companion {

/// A program and its arguments, started without a shell. Never empty.
using CommandLine = QStringList;

/// A habit that is kept in the log.
struct HabitSettings {
    QString id; ///< what the log calls it
    QString name;
    qint64 target = 1; ///< times wanted each day

    bool operator==(const HabitSettings&) const = default;
};

/// A chore that is kept in the log.
struct ChoreSettings {
    QString id; ///< what the log calls it
    QString name;
    QString room;    ///< may be empty
    qint64 days = 1; ///< from one time to the next

    bool operator==(const ChoreSettings&) const = default;
};

/// A list that a command prints, and the command that is told of a click in it.
struct ListCommand {
    CommandLine print;
    CommandLine act; ///< gets the item's id as its last argument; empty: clicks are refused

    bool operator==(const ListCommand&) const = default;
};

/// How a thought is written down.
enum class CaptureFormat { Markdown, TodoTxt, Org, Plain };

/// A file that thoughts are appended to.
struct CaptureFile {
    QString path;
    CaptureFormat format = CaptureFormat::Markdown;

    bool operator==(const CaptureFile&) const = default;
};

/// Where thoughts go: nowhere, into a file, or to a command, which reads them from its standard
/// input.
using CaptureSettings = std::variant<std::monostate, CaptureFile, CommandLine>;

/// How one account of the journal is shown.
struct BucketSettings {
    QString account;
    QString label; ///< empty: the account's own name
    QString icon;  ///< may be empty
    QString color; ///< "#1E90FF"; empty: one is chosen

    bool operator==(const BucketSettings&) const = default;
};

/// An hledger journal.
struct JournalSettings {
    QString path;
    QString currency; ///< as the journal writes it; empty: the only one there
    std::vector<BucketSettings> buckets;

    bool operator==(const JournalSettings&) const = default;
};

using SpendingSettings = std::variant<std::monostate, JournalSettings, CommandLine>;

/// An ActivityWatch server.
struct ActivitySettings {
    QUrl url;
    /// Categories whose time is productive, with those below them: "Work" or "Work > Writing".
    /// Empty: those to which the server's own rules give a positive score.
    QStringList productive;

    bool operator==(const ActivitySettings&) const = default;
};

using FocusSettings = std::variant<std::monostate, ActivitySettings, CommandLine>;

/// All that the configuration says.
struct ServiceSettings {
    QByteArray token;
    quint16 port = 8764;
    std::chrono::hours dayEnds{0}; ///< when a day of habits ends, behind midnight
    QString logPath;
    AgendaSettings agenda;
    std::vector<HabitSettings> habits;
    std::optional<ListCommand> habitsCommand; ///< instead of habits
    std::vector<ChoreSettings> chores;
    std::optional<ListCommand> choresCommand; ///< instead of chores
    CaptureSettings capture;
    SpendingSettings spending;
    FocusSettings focus;

    bool operator==(const ServiceSettings&) const = default;
};

} // namespace lumora::companion
