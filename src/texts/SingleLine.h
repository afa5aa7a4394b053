#pragma once

#include <QString>

namespace lumora {

/// `text` on one line: control characters, line ends among them, become spaces.
QString singleLine(const QString& text);

} // namespace lumora
