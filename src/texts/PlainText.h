#pragma once

#include <QString>

namespace lumora {

/// `text` on one line, as it may stand beside others or on a terminal: control characters, line
/// ends among them, become spaces, and what would turn the direction of writing beyond the text's
/// end, or undo what was turned before it, is left out. One beyond `longestLine` is cut there.
QString singleLine(const QString& text);

/// The same for each line of `text`; line feeds stay. All of it is cut at `longestPassage`.
QString plainLines(const QString& text);

/// `plainLines` of `text` as hosts that parse markup show them literally: "&", "<" and ">" as
/// entities.
QString escapedForMarkup(const QString& text);

/// `text` without spaces and tabs at its ends, and when it has more than `maximum` user-perceived
/// characters cut there, or before a space among the last five, with "…" in the end. Characters of
/// more than 32 UTF-16 units each are cut sooner, and so is what is beyond `longestPassage`.
/// `maximum` is more than five.
QString shortened(const QString& text, std::size_t maximum);

/// A meeting's title for the label: shortened to 16 characters.
QString shortTitle(const QString& title);

} // namespace lumora
