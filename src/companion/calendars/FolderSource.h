#pragma once

#include "companion/agenda/CalendarText.h"
#include "companion/calendars/CalendarSource.h"
#include "companion/watching/FileStamp.h"
#include "companion/watching/PathWatch.h"

#include <map>

namespace lumora::companion {

/// A folder of .ics files, read when one is put there, replaced, written into or taken away: only
/// that one is. A folder that holds no such file but folders of them is several calendars, each
/// with the name that its file "displayname" gives it, or its folder's.
class FolderSource final : public CalendarSource {
public:
    /// Reads `path`, which may begin with "~/".
    FolderSource(
        QString name, const QString& path, std::chrono::minutes refresh, ReaderSettings reader,
        Now now);

    /// Reads what has changed when that was last done `refresh` ago. Where files lie on another
    /// machine, nobody tells when they change there.
    void refreshDue() override;

private:
    /// A file as it was read.
    struct KnownFile {
        FileStamp stamp;
        std::optional<std::vector<EventRecord>> events; ///< absent: it is no calendar
    };

    using KnownFiles = std::map<QString, KnownFile>;

    void read();
    NamedEvents readFolder(const QString& folder, const QString& name, KnownFiles& known) const;
    KnownFile readCalendarFile(const QString& path) const;

    const QString m_name;
    const QString m_path;
    const std::chrono::minutes m_refresh;
    const ReaderSettings m_reader;
    PathWatch m_watch;
    std::chrono::sys_seconds m_lookedAt;
    KnownFiles m_known;
};

} // namespace lumora::companion
