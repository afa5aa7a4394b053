#include "ui/rows/RowItem.h"

#include "briefing/TextBounds.h"

namespace lumora {

namespace {

constexpr double spinnerFrame = 14;

} // namespace

RowItem RowItem::text(const QString& text, const TextStyle& style) {
    RowItem item;
    item.lines = {{beginning(text, longestLine), style}};
    return item;
}

RowItem RowItem::shrinkingText(const QString& text, const TextStyle& style) {
    RowItem item = RowItem::text(text, style);
    item.shrinks = true;
    return item;
}

RowItem RowItem::makeSymbol(const QString& name, const TextStyle& style) {
    RowItem item;
    item.kind = Kind::Symbol;
    item.symbol = name;
    item.style = style;
    return item;
}

RowItem RowItem::space(double atLeast) {
    RowItem item;
    item.kind = Kind::Space;
    item.width = atLeast;
    return item;
}

RowItem RowItem::bar(const QColor& color, double width) {
    RowItem item;
    item.kind = Kind::Bar;
    item.barColor = color;
    item.width = width;
    return item;
}

RowItem RowItem::badge(const QString& text) {
    RowItem item = RowItem::text(text, {.role = TextRole::Caption2, .weight = QFont::Bold});
    item.kind = Kind::Badge;
    return item;
}

RowItem RowItem::spinner(double rotation) {
    RowItem item;
    item.kind = Kind::Spinner;
    item.style.color = ColorRole::Secondary;
    item.width = spinnerFrame;
    item.rotation = rotation;
    return item;
}

} // namespace lumora
