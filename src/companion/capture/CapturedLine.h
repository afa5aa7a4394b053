#pragma once

#include "companion/settings/ServiceSettings.h"

#include <QByteArray>
#include <QDate>
#include <QString>

#include <optional>

namespace lumora::companion {

/// A thought on one line, with a blank for each line break and whatever else is no character;
/// absent when nothing is left of it.
[[nodiscard]] std::optional<QString> thoughtLine(const QString& text);

/// The line of a file that a thought becomes, with its end. `thought` is one line.
[[nodiscard]] QByteArray capturedLine(const QString& thought, CaptureFormat format, QDate day);

} // namespace lumora::companion
