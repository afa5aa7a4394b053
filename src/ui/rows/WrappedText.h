#pragma once

#include <QFont>
#include <QTextLayout>

#include <memory>

namespace lumora {

/// `text` in lines of at most `width` pixels, broken between words, and within a word only where
/// that is too long for a line. It runs the way it is written and stands at the leading edge of
/// `side`. `formats` are those of its parts.
[[nodiscard]] std::unique_ptr<QTextLayout> wrappedText(
    const QString& text, const QFont& font, double width, Qt::LayoutDirection side,
    const QList<QTextLayout::FormatRange>& formats = {});

/// The height of a laid out text in pixels.
[[nodiscard]] double heightOf(const QTextLayout& layout);

} // namespace lumora
