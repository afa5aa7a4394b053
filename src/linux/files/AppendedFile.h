#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

namespace lumora {

/// Adds whole lines, which end with a line feed, to the end of the file at `path`, in one piece,
/// whoever else writes there. Where the file does not end a line, one is ended first. A missing
/// file is made, readable by the user alone, and so are the folders above it. Never waits: whatever
/// is no file, such as a pipe, is refused. The error is the place and the system's own message.
[[nodiscard]] tl::expected<void, QString> appendLines(const QString& path, const QByteArray& lines);

} // namespace lumora
