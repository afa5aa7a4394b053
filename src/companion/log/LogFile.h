#pragma once

#include "companion/log/LogTotals.h"
#include "companion/watching/FileWatch.h"

#include <QObject>

#include <tl/expected.hpp>

#include <optional>

namespace lumora::companion {

/// The log on the disk, which people may edit meanwhile. It is read once, and again only when it
/// has changed; one that cannot be read counts as it was last.
class LogFile final : public QObject {
    Q_OBJECT

public:
    /// The largest log that is read, in bytes: that of some hundred years.
    static constexpr qint64 largest = qint64{32} * 1024 * 1024;

    /// The file need not exist.
    LogFile(QString path, std::chrono::hours dayEnds);

    /// What it says.
    [[nodiscard]] const LogTotals& totals();

    /// Adds an entry at its end. The error is one line for people; the log is as it was then.
    [[nodiscard]] tl::expected<void, QString> append(const LogEntry& entry);

    /// Why the file could not be read the last time; absent when it was, or there is none.
    [[nodiscard]] std::optional<QString> error() const { return m_error; }

    /// How many of its lines could not be read.
    [[nodiscard]] qsizetype skipped() const { return m_skipped; }

Q_SIGNALS:
    /// Somebody else has changed the file.
    void changed();

private:
    void read();

    const QString m_path;
    const std::chrono::hours m_dayEnds;
    FileWatch m_watch;
    LogTotals m_totals;
    std::optional<QString> m_error;
    qsizetype m_skipped = 0;
    bool m_isRead = false;
};

} // namespace lumora::companion
