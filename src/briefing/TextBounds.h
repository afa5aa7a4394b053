#pragma once

#include <QString>

/// How much is taken of a text that comes from outside. Nobody reads a megabyte beside the clock,
/// but searching, shaping or sending one holds everything else up, and what is shown is kept. So a
/// text is cut before anything else is done with it, to much more than there is ever room for.
/// Lengths count UTF-16 units.
namespace lumora {

/// Of what stands on one line: titles, names and places, in rows, tool tips, menus and to screen
/// readers. The panel has room for about a hundred narrow letters.
inline constexpr qsizetype longestLine = 1000;

/// Of what wraps, or has lines of its own: messages, and whatever is put together from lines.
inline constexpr qsizetype longestPassage = 2000;

/// `text` where it has at most `longest` units; otherwise as many whole characters of its beginning
/// as leave room for a "…" behind them. Never looks at what is beyond, so it costs the same however
/// long `text` is. `longest` is positive.
[[nodiscard]] QString beginning(const QString& text, qsizetype longest);

} // namespace lumora
