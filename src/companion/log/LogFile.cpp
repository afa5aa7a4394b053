#include "companion/log/LogFile.h"

#include "linux/files/AppendedFile.h"
#include "linux/files/WholeFile.h"

#include <utility>

namespace lumora::companion {

LogFile::LogFile(QString path, std::chrono::hours dayEnds)
    : m_path(std::move(path))
    , m_dayEnds(dayEnds)
    , m_watch(m_path) {
    connect(&m_watch, &FileWatch::changed, this, [this] {
        m_isRead = false;
        Q_EMIT changed();
    });
}

const LogTotals& LogFile::totals() {
    if (!m_isRead)
        read();
    return m_totals;
}

tl::expected<void, QString> LogFile::append(const LogEntry& entry) {
    m_isRead = false; // with what others wrote meanwhile
    return appendLines(m_path, logLine(entry));
}

void LogFile::read() {
    m_isRead = true;
    m_watch.acknowledge();
    auto bytes = readFile(m_path, largest);
    m_error.reset();
    if (!bytes && bytes.error().isAbsent)
        bytes = QByteArray();
    if (!bytes) {
        m_error = bytes.error().message;
        return;
    }
    const LogEntries log = parseLog(*bytes);
    m_totals = totalsOf(log, m_dayEnds);
    m_skipped = log.skipped;
}

} // namespace lumora::companion
