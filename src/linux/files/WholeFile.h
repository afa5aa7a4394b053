#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <tl/expected.hpp>

namespace lumora {

/// Puts a file with these bytes and permissions in the place of what stands at `path`, a link
/// included. Whatever happens meanwhile, a full disk, a crash or a power cut, what stands there is
/// the old or the new, whole. The folder must exist. The error is the place and the system's own
/// message; everything is as it was then.
[[nodiscard]] tl::expected<void, QString>
replaceFile(const QString& path, const QByteArray& bytes, QFile::Permissions permissions);

} // namespace lumora
