#include "ui/window/PanelPlacement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace lumora {

namespace {

/// No bar is thicker than this, so an item is never farther from its edge of the screen.
constexpr int barDepth = 64;

/// A press may come from the item's menu, or from a pop-up of the host that holds rare items:
/// that far from the bar, the bar is still meant.
constexpr int hostReach = 300;

/// From the middle of an item to its border, for bars that do not say how thick they are.
constexpr int itemRadius = 16;

enum class Side { Top, Bottom, Left, Right };
constexpr std::array allSides = {Side::Top, Side::Bottom, Side::Left, Side::Right};

/// How far `point` lies inside `rect`, seen from one of its sides; negative when outside.
int depth(QPoint point, const QRect& rect, Side side) {
    switch (side) {
    case Side::Top:
        return point.y() - rect.top();
    case Side::Bottom:
        return rect.bottom() - point.y();
    case Side::Left:
        return point.x() - rect.left();
    case Side::Right:
        return rect.right() - point.x();
    }
    Q_UNREACHABLE();
}

bool isReserved(const PlacementScreen& screen, Side side) {
    const QRect& all = screen.geometry;
    const QRect& free = screen.available;
    switch (side) {
    case Side::Top:
        return free.top() > all.top();
    case Side::Bottom:
        return free.bottom() < all.bottom();
    case Side::Left:
        return free.left() > all.left();
    case Side::Right:
        return free.right() < all.right();
    }
    Q_UNREACHABLE();
}

/// The side with the bar that holds the item; absent where the anchor is near no bar.
std::optional<Side> barSide(QPoint anchor, const PlacementScreen& screen) {
    std::optional<Side> nearest;
    for (const Side side : allSides) {
        if (!isReserved(screen, side))
            continue;
        const int distance = depth(anchor, screen.available, side);
        if (distance < 0)
            return side;
        if (distance <= hostReach &&
            (!nearest || distance < depth(anchor, screen.available, *nearest)))
            nearest = side;
    }
    if (nearest)
        return nearest;
    // A bar that hides itself reserves nothing, and neither does any bar as soon as X11 has
    // several monitors. Status areas end horizontal bars, so a corner belongs to one of those.
    const auto close = std::ranges::find_if(
        allSides, [&](Side side) { return depth(anchor, screen.geometry, side) <= barDepth; });
    return close == allSides.end() ? std::nullopt : std::optional(*close);
}

std::optional<int> screenAt(QPoint point, const QList<PlacementScreen>& screens) {
    const auto found = std::ranges::find_if(
        screens, [&](const PlacementScreen& screen) { return screen.geometry.contains(point); });
    if (found == screens.end())
        return std::nullopt;
    return int(found - screens.begin());
}

std::optional<PanelAnchor>
knownAnchor(const std::optional<QPoint>& point, const QList<PlacementScreen>& screens) {
    const auto screen = point ? screenAt(*point, screens) : std::nullopt;
    if (!screen)
        return std::nullopt;
    return PanelAnchor{.point = *point, .screen = *screen, .known = true};
}

/// A screen keeps its origin in device pixels; only distances from there are scaled.
std::optional<QPoint> inPoints(QPoint pixel, const QList<PlacementScreen>& screens) {
    for (const PlacementScreen& screen : screens) {
        const QPoint origin = screen.geometry.topLeft();
        const QPointF offset = QPointF(pixel - origin) / screen.scale;
        const QPoint point =
            origin + QPoint(int(std::floor(offset.x())), int(std::floor(offset.y())));
        if (screen.geometry.contains(point))
            return point;
    }
    return std::nullopt;
}

/// What the host says, if it can be true.
std::optional<PanelAnchor>
hostAnchor(const std::optional<QPoint>& activation, const QList<PlacementScreen>& screens) {
    if (!activation)
        return std::nullopt;
    const auto anchor = knownAnchor(inPoints(*activation, screens), screens);
    if (!anchor)
        return std::nullopt;
    const PlacementScreen& screen = screens.at(anchor->screen);
    // Some hosts count from the item's own corner, which looks like the corner of the desktop.
    const QRectF itemItself(0, 0, barDepth * screen.scale, barDepth * screen.scale);
    if (itemItself.contains(*activation))
        return std::nullopt;
    const bool inBar = !screen.available.contains(anchor->point);
    const bool nearEdge = std::ranges::any_of(allSides, [&](Side side) {
        return depth(anchor->point, screen.geometry, side) <= barDepth;
    });
    return inBar || nearEdge ? anchor : std::nullopt;
}

/// Status areas are at the end of their bar; without any sign of a bar, at the top right.
PanelAnchor likelyAnchor(const PlacementScreen& screen) {
    const QRect& all = screen.geometry;
    const bool top = isReserved(screen, Side::Top);
    const bool bottom = !top && isReserved(screen, Side::Bottom);
    const bool right = !top && !bottom && isReserved(screen, Side::Right);
    const bool left = !top && !bottom && !right && isReserved(screen, Side::Left);
    if (left)
        return {.point = all.bottomLeft()};
    return {.point = bottom || right ? all.bottomRight() : all.topRight()};
}

bool isInLowerHalf(QPoint anchor, const PlacementScreen& screen) {
    return anchor.y() >= screen.geometry.top() + screen.geometry.height() / 2;
}

/// Like `std::clamp`, and `low` where there is no room at all.
int clamped(int value, int low, int high) {
    return std::max(low, std::min(value, high));
}

/// The columns or rows that the panel takes beside a bar: away from the anchor by half an item
/// where the bar did not reserve its own room.
QRect besideBar(QPoint anchor, const PlacementScreen& screen, const QRect& room, Side side) {
    QRect reach = room;
    if (isReserved(screen, side))
        return reach;
    switch (side) {
    case Side::Top:
        reach.setTop(std::max(room.top(), anchor.y() + itemRadius));
        break;
    case Side::Bottom:
        reach.setBottom(std::min(room.bottom(), anchor.y() - itemRadius));
        break;
    case Side::Left:
        reach.setLeft(std::max(room.left(), anchor.x() + itemRadius));
        break;
    case Side::Right:
        reach.setRight(std::min(room.right(), anchor.x() - itemRadius));
        break;
    }
    return reach;
}

/// The top of a panel that has no horizontal bar to hold on to: level with the anchor beside a
/// vertical bar, else above or below it; anywhere in `reach`.
int freeTop(QPoint anchor, const QRect& reach, int height, PanelGrowth growth, int distance) {
    const int wanted =
        growth == PanelGrowth::Down ? anchor.y() + distance : anchor.y() - distance - height + 1;
    return clamped(wanted, reach.top(), reach.bottom() + 1 - height);
}

} // namespace

std::optional<PanelAnchor>
chooseAnchor(const AnchorEvidence& evidence, const QList<PlacementScreen>& screens) {
    if (screens.isEmpty())
        return std::nullopt;
    if (const auto anchor = knownAnchor(evidence.pointer, screens))
        return anchor;
    if (const auto anchor = hostAnchor(evidence.activation, screens))
        return anchor;
    if (const auto anchor = knownAnchor(evidence.lastGood, screens))
        return anchor;
    return likelyAnchor(screens.front());
}

PanelPlacement
placePanel(QPoint anchor, const PlacementScreen& screen, const QSize& size, int gap) {
    const QRect room = screen.available.adjusted(gap, gap, -gap, -gap);
    const auto side = barSide(anchor, screen);
    const bool horizontal = side == Side::Top || side == Side::Bottom;
    const bool up = horizontal ? side == Side::Bottom : isInLowerHalf(anchor, screen);
    const PanelGrowth growth = up ? PanelGrowth::Up : PanelGrowth::Down;

    const QRect free = side ? besideBar(anchor, screen, room, *side) : room;
    int left = anchor.x() - size.width() / 2;
    if (side == Side::Left)
        left = free.left();
    else if (side == Side::Right)
        left = free.right() + 1 - size.width();
    left = clamped(left, room.left(), room.right() + 1 - size.width());
    const QRect reach(left, free.top(), size.width(), free.height());

    const int height = clamped(size.height(), 0, reach.height());
    int top = up ? reach.bottom() + 1 - height : reach.top();
    if (!horizontal)
        top = freeTop(anchor, reach, height, growth, side ? 0 : itemRadius);
    return {.panel = QRect(left, top, size.width(), height), .growth = growth, .reach = reach};
}

} // namespace lumora
