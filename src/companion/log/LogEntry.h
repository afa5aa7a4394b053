#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDate>
#include <QString>
#include <QTimeZone>

#include <chrono>
#include <optional>
#include <vector>

namespace lumora::companion {

/// One line of the log: something that was done.
struct LogEntry {
    enum class Kind { Habit, Chore };

    std::chrono::sys_seconds time;  ///< UTC
    std::chrono::seconds offset{0}; ///< from UTC, where it was written
    Kind kind = Kind::Habit;
    QString id;        ///< as the configuration has it; no control characters
    qint64 change = 1; ///< how many more times today, for habits; for chores always 1

    bool operator==(const LogEntry&) const = default;
};

/// The entries of a log, in its order.
struct LogEntries {
    std::vector<LogEntry> entries;
    qsizetype skipped = 0; ///< lines that could not be read

    bool operator==(const LogEntries&) const = default;
};

/// Reads a line without its end: time, "habit" or "chore", id, and "+1" or "done", with a tab
/// between them. Absent when it is no such line.
[[nodiscard]] std::optional<LogEntry> parseLogLine(QByteArrayView line);

/// Reads a log. Empty lines, and those that begin with "#", are nobody's fault.
[[nodiscard]] LogEntries parseLog(QByteArrayView bytes);

/// The line of an entry, with its end.
[[nodiscard]] QByteArray logLine(const LogEntry& entry);

/// The day that something at `time` belongs to, where clocks are `offset` from UTC and days end at
/// `dayEnds` behind midnight.
[[nodiscard]] QDate
dayOf(std::chrono::sys_seconds time, std::chrono::seconds offset, std::chrono::hours dayEnds);

/// The offset from UTC in `zone` at `time`.
[[nodiscard]] std::chrono::seconds offsetAt(std::chrono::sys_seconds time, const QTimeZone& zone);

} // namespace lumora::companion
