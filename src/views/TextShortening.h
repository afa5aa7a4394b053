#pragma once

#include <QString>

namespace lumora {

/// `text` without spaces and tabs at its ends.
QString trimmedBlanks(const QString& text);

/// A meeting's title for the label: trimmed, and when it has more than 16 user-perceived characters
/// cut there, or before a space among the last five, with "…" in the end.
QString shortTitle(const QString& title);

} // namespace lumora
