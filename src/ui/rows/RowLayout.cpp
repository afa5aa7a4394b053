#include "ui/rows/RowLayout.h"

#include "ui/rows/TextDrawing.h"

#include <QFontInfo>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace lumora {

namespace {

// Around a badge's number, within its capsule.
constexpr double badgeMarginX = 5;
constexpr double badgeMarginY = 1;

/// The edge of a symbol's square beside text one pixel high. A drawing keeps a margin on its grid;
/// beside small print it has to be larger than the letters to be made out.
double symbolToText(TextRole role) {
    switch (role) {
    case TextRole::Caption:
        return 1.4;
    case TextRole::Caption2:
        return 1.2;
    default:
        return 1.1;
    }
}

double naturalWidth(const RowItem& item, const Theme& theme) {
    if (item.width > 0)
        return theme.exact(item.width);
    if (item.kind == RowItem::Kind::Symbol)
        return symbolEdge(item.style.role, theme);
    if (item.lines.empty())
        return 0;
    double width = 0;
    for (const TextLine& line : item.lines)
        width = std::max(width, std::ceil(textWidth(line, theme)));
    return item.kind == RowItem::Kind::Badge ? width + theme.exact(2 * badgeMarginX) : width;
}

double heightOf(const RowItem& item, const Theme& theme) {
    if (item.kind == RowItem::Kind::Symbol)
        return symbolEdge(item.style.role, theme);
    if (item.kind == RowItem::Kind::Spinner)
        return theme.exact(item.width);
    double height = 0;
    for (const TextLine& line : item.lines)
        height += lineHeight(line, theme).whole;
    if (item.kind == RowItem::Kind::Badge)
        height += theme.exact(2 * badgeMarginY);
    return std::ceil(height);
}

double ascentOf(const RowItem& item, const Theme& theme) {
    return item.lines.empty() ? 0 : lineHeight(item.lines.front(), theme).ascent;
}

bool takesTheRest(const RowItem& item) {
    return item.kind == RowItem::Kind::Space;
}

double gapAfter(const RowContent& content, const Theme& theme, std::size_t index) {
    if (index + 1 == content.items.size())
        return 0;
    return theme.exact(content.items[index].gapAfter.value_or(content.spacing));
}

double gaps(const RowContent& content, const Theme& theme) {
    double sum = 0;
    for (std::size_t i = 0; i < content.items.size(); ++i)
        sum += gapAfter(content, theme, i);
    return sum;
}

/// Takes what `spare` lacks from the items that `givesWay`, the last one first.
template <typename GivesWay>
void shrink(
    const std::vector<RowItem>& items, std::vector<double>& widths, double& spare,
    GivesWay givesWay) {
    for (std::size_t i = widths.size(); i-- > 0 && spare < 0;) {
        if (givesWay(items[i])) {
            const double given = std::min(widths[i], -spare);
            widths[i] -= given;
            spare += given;
        }
    }
}

/// The widths in `width` pixels: texts that shrink give way, then all others; spaces take what is
/// over.
std::vector<double> widths(const RowContent& content, const Theme& theme, double width) {
    std::vector<double> result;
    double used = gaps(content, theme);
    for (const RowItem& item : content.items) {
        result.push_back(naturalWidth(item, theme));
        used += result.back();
    }
    double spare = width - used;
    shrink(content.items, result, spare, [](const RowItem& item) { return item.shrinks; });
    shrink(content.items, result, spare, [](const RowItem& item) {
        return item.kind == RowItem::Kind::Text;
    });
    const auto space = std::find_if(content.items.begin(), content.items.end(), takesTheRest);
    if (space != content.items.end() && spare > 0)
        result[std::size_t(space - content.items.begin())] += spare;
    return result;
}

} // namespace

double symbolEdge(TextRole role, const Theme& theme) {
    return std::round(QFontInfo(theme.font(role)).pixelSize() * symbolToText(role));
}

double naturalRowWidth(const RowContent& content, const Theme& theme) {
    double width = gaps(content, theme);
    for (const RowItem& item : content.items)
        width += naturalWidth(item, theme);
    return width;
}

QStringList cutTexts(const RowContent& content, const Theme& theme, double width) {
    QStringList cut;
    const std::vector<double> itemWidths = widths(content, theme, width);
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        if (content.items[i].kind != RowItem::Kind::Text)
            continue;
        for (const TextLine& line : content.items[i].lines)
            if (isCut(line, theme, itemWidths[i]))
                cut += line.text;
    }
    return cut;
}

RowGeometry layOutRow(
    const RowContent& content, const Theme& theme, double width, Qt::LayoutDirection direction) {
    const bool onBaseline = content.alignment == RowContent::Alignment::FirstBaseline;
    RowGeometry geometry;
    geometry.direction = direction;
    for (const RowItem& item : content.items)
        geometry.baseline = std::max(geometry.baseline, ascentOf(item, theme));

    const auto drop = [&](const RowItem& item) {
        return onBaseline && !item.lines.empty() ? geometry.baseline - ascentOf(item, theme) : 0;
    };
    for (const RowItem& item : content.items)
        geometry.height = std::max(geometry.height, std::ceil(drop(item) + heightOf(item, theme)));

    if (content.beside)
        geometry.height =
            std::max(geometry.height, std::ceil(lineHeight(*content.beside, theme).whole));

    const std::vector<double> itemWidths = widths(content, theme, width);
    double x = 0;
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        const RowItem& item = content.items[i];
        const bool fillsHeight = item.kind == RowItem::Kind::Bar;
        const double height = fillsHeight ? geometry.height : heightOf(item, theme);
        const double y = onBaseline ? drop(item) : (geometry.height - height) / 2;
        const bool fromLeft = direction == Qt::LeftToRight;
        geometry.items.emplace_back(
            fromLeft ? x : width - x - itemWidths[i], y, itemWidths[i], height);
        x += itemWidths[i] + gapAfter(content, theme, i);
    }
    return geometry;
}

} // namespace lumora
