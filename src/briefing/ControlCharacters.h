#pragma once

#include <QChar>

namespace lumora {

/// Whether `character` stands for nothing that could be seen, but ends a line or steers whatever
/// prints it: C0 and C1, delete, and the separators of lines and paragraphs.
[[nodiscard]] bool isControlCharacter(QChar character);

/// What a character does to the direction of those that follow it.
enum class BidiControl {
    None,
    OpensEmbedding, ///< or an override; ended by `ClosesEmbedding`
    ClosesEmbedding,
    OpensIsolate, ///< ended by `ClosesIsolate`, with all that was opened meanwhile
    ClosesIsolate,
};

[[nodiscard]] BidiControl bidiControl(QChar character);

} // namespace lumora
