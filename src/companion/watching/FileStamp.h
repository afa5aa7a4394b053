#pragma once

#include <QString>

namespace lumora::companion {

/// By what two states of the file at a path are told apart without reading it.
struct FileStamp {
    quint64 device = 0;
    quint64 node = 0;
    qint64 size = -1; ///< negative: there is no file
    /// When anything about it changed last, since 1970. Programs can put back when its content did,
    /// and some of those that copy files do; this they cannot.
    qint64 seconds = 0;
    qint64 nanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

/// That of the file at `path`, or of the one that a link there leads to.
[[nodiscard]] FileStamp fileStamp(const QString& path);

} // namespace lumora::companion
