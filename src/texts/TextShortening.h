#pragma once

#include <QString>

namespace lumora {

/// `text` without spaces and tabs at its ends, and when it has more than `most` user-perceived
/// characters cut there, or before a space among the last five, with "…" in the end. `most` is more
/// than five.
QString shortened(const QString& text, std::size_t most);

/// A meeting's title for the label: shortened to 16 characters.
QString shortTitle(const QString& title);

} // namespace lumora
