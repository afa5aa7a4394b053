#pragma once

#include <QString>

namespace lumora {

/// `text` on one line: control characters, line ends among them, become spaces.
QString singleLine(const QString& text);

/// `text` as hosts that parse markup show it literally: "&", "<" and ">" as entities. Line ends
/// stay, other control characters become spaces.
QString escapedForMarkup(const QString& text);

/// `text` without spaces and tabs at its ends, and when it has more than `maximum` user-perceived
/// characters cut there, or before a space among the last five, with "…" in the end. `maximum` is
/// more than five.
QString shortened(const QString& text, std::size_t maximum);

/// A meeting's title for the label: shortened to 16 characters.
QString shortTitle(const QString& title);

} // namespace lumora
