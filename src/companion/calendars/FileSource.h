#pragma once

#include "companion/agenda/CalendarText.h"
#include "companion/calendars/CalendarSource.h"
#include "companion/watching/FileWatch.h"

namespace lumora::companion {

/// A calendar in one file, read when it changes.
class FileSource final : public CalendarSource {
public:
    /// Reads `path`, which may begin with "~/".
    FileSource(QString name, const QString& path, ReaderSettings reader, Now now);

    /// Looks whether the file has changed. Where files lie on another machine, nobody tells when
    /// they change there.
    void refreshDue() override;

private:
    void read();

    const QString m_name;
    const QString m_path;
    const ReaderSettings m_reader;
    FileWatch m_watch;
};

/// A path as people write it in a configuration, where "~/" is their home.
[[nodiscard]] QString fullPath(const QString& path);

} // namespace lumora::companion
