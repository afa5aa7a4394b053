#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <tl/expected.hpp>

namespace lumora {

/// The largest file that is read or written as a whole, in bytes, unless more is asked for. Those
/// that people and programs keep their settings in are a thousand times smaller.
inline constexpr qint64 largestWholeFile = 1'048'576;

/// Why a file was not read.
struct ReadFailure {
    bool isAbsent = false; ///< there is none
    QString message;       ///< the file and the system's own message, for people

    bool operator==(const ReadFailure&) const = default;
};

/// A path as people write it: one in the user's home begins with "~".
QString pathForPeople(const QString& path);

/// What stands in the file at `path`, or in the one that a link there leads to, up to `largest`
/// bytes. Never waits: whatever is no file, such as a pipe, is not even opened.
[[nodiscard]] tl::expected<QByteArray, ReadFailure>
readFile(const QString& path, qint64 largest = largestWholeFile);

/// Puts a file with these bytes and permissions in the place of what stands at `path`, a link
/// included. Whatever happens meanwhile, a full disk, a crash or a power cut, what stands there is
/// the old or the new, whole. The folder must exist. The error is the place and the system's own
/// message; everything is as it was then.
[[nodiscard]] tl::expected<void, QString> replaceFile(
    const QString& path, const QByteArray& bytes, QFile::Permissions permissions,
    qint64 largest = largestWholeFile);

} // namespace lumora
