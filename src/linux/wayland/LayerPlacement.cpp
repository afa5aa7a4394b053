#include "linux/wayland/LayerPlacement.h"

#include <algorithm>

namespace lumora {

QRect freeArea(const QRect& screen, const QSize& usable, QPoint near) {
    const QSize taken = (screen.size() - usable).expandedTo(QSize(0, 0));
    const bool onLeft = near.x() < screen.left() + screen.width() / 2;
    const bool onTop = near.y() < screen.top() + screen.height() / 2;
    return screen.adjusted(
        onLeft ? taken.width() : 0, onTop ? taken.height() : 0, onLeft ? 0 : -taken.width(),
        onTop ? 0 : -taken.height());
}

QRect partArea(const QRect& wanted, QPoint believed, QPoint actual, const QRect& available) {
    QRect area = wanted.translated(actual - believed);
    area.moveRight(std::min(area.right(), available.right()));
    area.moveBottom(std::min(area.bottom(), available.bottom()));
    area.moveLeft(std::max(area.left(), available.left()));
    area.moveTop(std::max(area.top(), available.top()));
    return area;
}

LayerPlacement layerPlacement(const QRect& area, const QRect& available) {
    const int left = area.left() - available.left();
    const int right = available.right() - area.right();
    const int top = area.top() - available.top();
    const int bottom = available.bottom() - area.bottom();
    using Horizontal = LayerPlacement::Horizontal;
    using Vertical = LayerPlacement::Vertical;
    return {
        .horizontal = left <= right ? Horizontal::Left : Horizontal::Right,
        .vertical = top <= bottom ? Vertical::Top : Vertical::Bottom,
        .size = area.size(),
        .margin = {std::min(left, right), std::min(top, bottom)},
    };
}

} // namespace lumora
