#include "ui/rows/RowLayout.h"

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

/// What an item takes by itself, in pixels.
struct Measured {
    double width = 0;
    double height = 0;
    double ascent = 0; ///< of its first text line
};

Measured measuredTexts(const RowItem& item, const Theme& theme) {
    Measured sum;
    for (const TextLine& line : item.lines) {
        const LineHeight height = lineHeight(line, theme);
        if (&line == &item.lines.front())
            sum.ascent = height.ascent;
        sum.height += height.whole;
        if (item.width == 0)
            sum.width = std::max(sum.width, std::ceil(textWidth(line, theme)));
    }
    if (item.kind == RowItem::Kind::Badge) {
        sum.width += theme.exact(2 * badgeMarginX);
        sum.height += theme.exact(2 * badgeMarginY);
    }
    sum.height = std::ceil(sum.height);
    return sum;
}

Measured measured(const RowItem& item, const Theme& theme) {
    Measured size;
    if (item.kind == RowItem::Kind::Symbol)
        size.width = size.height = symbolEdge(item.style.role, theme);
    else if (item.kind == RowItem::Kind::Spinner)
        size.height = theme.exact(item.width);
    else
        size = measuredTexts(item, theme);
    if (item.width > 0)
        size.width = theme.exact(item.width);
    return size;
}

/// Each item is measured once: shaping its texts is what takes the time in a long list.
std::vector<Measured> measured(const RowContent& content, const Theme& theme) {
    std::vector<Measured> sizes;
    sizes.reserve(content.items.size());
    for (const RowItem& item : content.items)
        sizes.push_back(measured(item, theme));
    return sizes;
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

double
naturalWidth(const RowContent& content, const std::vector<Measured>& sizes, const Theme& theme) {
    double width = gaps(content, theme);
    for (const Measured& size : sizes)
        width += size.width;
    return width;
}

/// The widths in `width` pixels: texts that shrink give way, then all others; spaces take what is
/// over.
std::vector<double> widths(
    const RowContent& content, const std::vector<Measured>& sizes, const Theme& theme,
    double width) {
    std::vector<double> result(sizes.size());
    std::ranges::transform(sizes, result.begin(), &Measured::width);
    double spare = width - naturalWidth(content, sizes, theme);
    shrink(content.items, result, spare, [](const RowItem& item) { return item.shrinks; });
    shrink(content.items, result, spare, [](const RowItem& item) {
        return item.kind == RowItem::Kind::Text;
    });
    const auto space = std::find_if(content.items.begin(), content.items.end(), takesTheRest);
    if (space != content.items.end() && spare > 0)
        result[std::size_t(space - content.items.begin())] += spare;
    return result;
}

double baselineOf(const std::vector<Measured>& sizes) {
    double baseline = 0;
    for (const Measured& size : sizes)
        baseline = std::max(baseline, size.ascent);
    return baseline;
}

/// How far below the row's top a text item begins, so that all first lines stand on `baseline`.
double drop(const RowContent& content, std::size_t index, const Measured& size, double baseline) {
    const bool onBaseline = content.alignment == RowContent::Alignment::FirstBaseline;
    return onBaseline && !content.items[index].lines.empty() ? baseline - size.ascent : 0;
}

double heightOf(const RowContent& content, const std::vector<Measured>& sizes, const Theme& theme) {
    const double baseline = baselineOf(sizes);
    double height = content.beside ? std::ceil(lineHeight(*content.beside, theme).whole) : 0;
    for (std::size_t i = 0; i < sizes.size(); ++i)
        height =
            std::max(height, std::ceil(drop(content, i, sizes[i], baseline) + sizes[i].height));
    return height;
}

/// The lines of a text that stands in `rect`.
void placeTexts(
    RowGeometry& geometry, const QRectF& rect, const RowItem& item, const Theme& theme) {
    const bool fromRight = geometry.direction == Qt::RightToLeft;
    double top = rect.top();
    for (const TextLine& line : item.lines) {
        const LineHeight height = lineHeight(line, theme);
        const TextLine shown = elidedLine(line, theme, rect.width());
        const double left = fromRight ? rect.right() - textWidth(shown, theme) : rect.left();
        geometry.lines.push_back({{left, top + height.ascent}, ShapedLine(shown, theme)});
        top += height.whole;
    }
}

/// A badge's number, in the middle of its capsule.
void placeNumber(
    RowGeometry& geometry, const QRectF& rect, const RowItem& item, const Theme& theme) {
    const TextLine& line = item.lines.front();
    const QFontMetricsF metrics(theme.font(line.style.role, line.style.weight));
    const double left = rect.center().x() - textWidth(line, theme) / 2;
    const double top = rect.center().y() - metrics.height() / 2;
    geometry.lines.push_back({{left, top + metrics.ascent()}, ShapedLine(line, theme)});
}

void placeLines(RowGeometry& geometry, const RowContent& content, const Theme& theme) {
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        if (content.items[i].kind == RowItem::Kind::Text)
            placeTexts(geometry, geometry.items[i], content.items[i], theme);
        else if (content.items[i].kind == RowItem::Kind::Badge)
            placeNumber(geometry, geometry.items[i], content.items[i], theme);
    }
}

} // namespace

double symbolEdge(TextRole role, const Theme& theme) {
    return std::round(QFontInfo(theme.font(role)).pixelSize() * symbolToText(role));
}

QSizeF naturalRowSize(const RowContent& content, const Theme& theme) {
    const std::vector<Measured> sizes = measured(content, theme);
    return {naturalWidth(content, sizes, theme), heightOf(content, sizes, theme)};
}

QStringList cutTexts(const RowContent& content, const Theme& theme, double width) {
    QStringList cut;
    const std::vector<double> itemWidths = widths(content, measured(content, theme), theme, width);
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
    const std::vector<Measured> sizes = measured(content, theme);
    const std::vector<double> itemWidths = widths(content, sizes, theme, width);
    RowGeometry geometry{
        .items = {},
        .lines = {},
        .baseline = baselineOf(sizes),
        .height = heightOf(content, sizes, theme),
        .direction = direction,
    };
    double x = 0;
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        const bool fillsHeight = content.items[i].kind == RowItem::Kind::Bar;
        const double height = fillsHeight ? geometry.height : sizes[i].height;
        const double y = onBaseline ? drop(content, i, sizes[i], geometry.baseline)
                                    : (geometry.height - height) / 2;
        const bool fromLeft = direction == Qt::LeftToRight;
        geometry.items.emplace_back(
            fromLeft ? x : width - x - itemWidths[i], y, itemWidths[i], height);
        x += itemWidths[i] + gapAfter(content, theme, i);
    }
    placeLines(geometry, content, theme);
    return geometry;
}

} // namespace lumora
