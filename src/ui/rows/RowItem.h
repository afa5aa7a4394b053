#pragma once

#include "ui/theme/Theme.h"

#include <QString>

#include <optional>
#include <vector>

namespace lumora {

/// How a text in a row looks.
struct TextStyle {
    TextRole role = TextRole::Callout;
    ColorRole color = ColorRole::Primary;
    QFont::Weight weight = QFont::Normal;
    bool struckThrough = false;
    bool equalWidthDigits = false;

    bool operator==(const TextStyle&) const = default;
};

/// One line of text, at most `longestLine`. A line that does not fit ends with "…".
struct TextLine {
    QString text;
    TextStyle style;

    bool operator==(const TextLine&) const = default;
};

/// One thing in a row, from the leading edge on. Lengths in points of the design.
struct RowItem {
    enum class Kind {
        Text,    ///< `lines`, one under the other, the first on the row's baseline
        Symbol,  ///< `symbol`, sized, coloured and weighted by `style`
        Space,   ///< takes what is left, at least `width`
        Badge,   ///< `lines` in bold on a capsule
        Spinner, ///< a turning arc, `width` wide and high, at `rotation`
        Bar,     ///< a rounded bar as tall as the row, `width` wide, in `barColor`
    };

    Kind kind = Kind::Text;
    std::vector<TextLine> lines;
    QString symbol;
    TextStyle style;
    double width = 0;     ///< of a text or symbol: a fixed column; 0: as wide as it is
    bool shrinks = false; ///< of a text: gives way first when the row is too narrow
    double rotation = 0;  ///< of a symbol or spinner, degrees clockwise
    QColor barColor;
    std::optional<double> gapAfter; ///< points to the next item; absent: the row's spacing

    /// A text, and one that shrinks, of which all is kept that a tool tip shows.
    [[nodiscard]] static RowItem text(const QString& text, const TextStyle& style);
    [[nodiscard]] static RowItem shrinkingText(const QString& text, const TextStyle& style);
    [[nodiscard]] static RowItem makeSymbol(const QString& name, const TextStyle& style);
    [[nodiscard]] static RowItem space(double atLeast = 0);
    [[nodiscard]] static RowItem bar(const QColor& color, double width);
    [[nodiscard]] static RowItem badge(const QString& text);
    [[nodiscard]] static RowItem spinner(double rotation);

    bool operator==(const RowItem&) const = default;
};

/// A row's items and how they stand.
struct RowContent {
    enum class Alignment { Centre, FirstBaseline };

    std::vector<RowItem> items;
    double spacing = 6; ///< between two items, points
    Alignment alignment = Alignment::Centre;
    std::optional<TextLine> beside = std::nullopt; ///< a line that the row is as high as, at least

    bool operator==(const RowContent&) const = default;
};

} // namespace lumora
