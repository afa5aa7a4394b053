#pragma once

#include <QString>

namespace lumora {

/// `text` as hosts that parse markup show it literally: "&", "<" and ">" as entities. Line ends
/// stay, other control characters become spaces.
QString escapedForMarkup(const QString& text);

} // namespace lumora
