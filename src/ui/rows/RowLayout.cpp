#include "ui/rows/RowLayout.h"

#include "ui/rows/TextDrawing.h"

#include <QFontInfo>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace lumora {

namespace {

// A drawing keeps a margin on its grid, so its square is a little larger than the letters.
constexpr double symbolToText = 1.25;

// Around a badge's number, within its capsule.
constexpr double badgeMarginX = 5;
constexpr double badgeMarginY = 1;

QFontMetricsF metricsOf(const TextLine& line, const Theme& theme) {
    return QFontMetricsF(theme.font(line.style.role, line.style.weight));
}

double naturalWidth(const RowItem& item, const Theme& theme) {
    if (item.kind == RowItem::Kind::Symbol)
        return symbolEdge(item.style.role, theme);
    if (item.lines.empty() || item.width > 0)
        return item.width;
    double width = 0;
    for (const TextLine& line : item.lines)
        width = std::max(width, std::ceil(textWidth(line, theme)));
    return item.kind == RowItem::Kind::Badge ? width + 2 * badgeMarginX : width;
}

double heightOf(const RowItem& item, const Theme& theme) {
    if (item.kind == RowItem::Kind::Symbol)
        return symbolEdge(item.style.role, theme);
    if (item.kind == RowItem::Kind::Spinner)
        return item.width;
    double height = 0;
    for (const TextLine& line : item.lines)
        height += metricsOf(line, theme).height();
    if (item.kind == RowItem::Kind::Badge)
        height += 2 * badgeMarginY;
    return std::ceil(height);
}

double ascentOf(const RowItem& item, const Theme& theme) {
    return item.lines.empty() ? 0 : metricsOf(item.lines.front(), theme).ascent();
}

bool takesTheRest(const RowItem& item) {
    return item.kind == RowItem::Kind::Space;
}

double gapAfter(const RowContent& content, std::size_t index) {
    if (index + 1 == content.items.size())
        return 0;
    return content.items[index].gapAfter.value_or(content.spacing);
}

double gaps(const RowContent& content) {
    double sum = 0;
    for (std::size_t i = 0; i < content.items.size(); ++i)
        sum += gapAfter(content, i);
    return sum;
}

/// The widths in `width` points: shrinking texts give way, the last one first; spaces take what is
/// over.
std::vector<double> widths(const RowContent& content, const Theme& theme, double width) {
    std::vector<double> result;
    double used = gaps(content);
    for (const RowItem& item : content.items) {
        result.push_back(naturalWidth(item, theme));
        used += result.back();
    }
    double spare = width - used;
    for (std::size_t i = result.size(); i-- > 0 && spare < 0;) {
        if (content.items[i].shrinks) {
            const double given = std::min(result[i], -spare);
            result[i] -= given;
            spare += given;
        }
    }
    const auto space = std::find_if(content.items.begin(), content.items.end(), takesTheRest);
    if (space != content.items.end() && spare > 0)
        result[std::size_t(space - content.items.begin())] += spare;
    return result;
}

} // namespace

double symbolEdge(TextRole role, const Theme& theme) {
    return std::round(QFontInfo(theme.font(role)).pixelSize() * symbolToText);
}

double naturalRowWidth(const RowContent& content, const Theme& theme) {
    double width = gaps(content);
    for (const RowItem& item : content.items)
        width += naturalWidth(item, theme);
    return width;
}

RowGeometry layOutRow(const RowContent& content, const Theme& theme, double width) {
    const bool onBaseline = content.alignment == RowContent::Alignment::FirstBaseline;
    RowGeometry geometry;
    for (const RowItem& item : content.items)
        geometry.baseline = std::max(geometry.baseline, ascentOf(item, theme));

    const auto drop = [&](const RowItem& item) {
        return onBaseline && !item.lines.empty() ? geometry.baseline - ascentOf(item, theme) : 0;
    };
    for (const RowItem& item : content.items)
        geometry.height = std::max(geometry.height, std::ceil(drop(item) + heightOf(item, theme)));

    const std::vector<double> itemWidths = widths(content, theme, width);
    double x = 0;
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        const RowItem& item = content.items[i];
        const bool fillsHeight = item.kind == RowItem::Kind::Bar;
        const double height = fillsHeight ? geometry.height : heightOf(item, theme);
        const double y = onBaseline ? drop(item) : (geometry.height - height) / 2;
        geometry.items.emplace_back(x, y, itemWidths[i], height);
        x += itemWidths[i] + gapAfter(content, i);
    }
    return geometry;
}

} // namespace lumora
