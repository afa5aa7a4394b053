#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace lumora {

/// What bars leave free of `screen`, of which as much as `usable` is known to be free: bars are at
/// those edges that are nearer to `near`. All of it in points.
[[nodiscard]] QRect freeArea(const QRect& screen, const QSize& usable, QPoint near);

/// Where a part of a window goes that wants to be at `wanted`, counted from where the toolkit
/// believes the window to be, when it is really at `actual`: never outside `available`.
[[nodiscard]] QRect
partArea(const QRect& wanted, QPoint believed, QPoint actual, const QRect& available);

/// A place in a screen's free area as compositors are told of it: held to two of its edges, with a
/// distance from each. They find those edges better than anybody else.
struct LayerPlacement {
    enum class Horizontal { Left, Right };
    enum class Vertical { Top, Bottom };

    Horizontal horizontal = Horizontal::Left;
    Vertical vertical = Vertical::Top;
    QSize size;   ///< in points
    QSize margin; ///< from the two edges, in points

    bool operator==(const LayerPlacement&) const = default;
};

/// Holds `area` to those edges of `available` that are nearer.
[[nodiscard]] LayerPlacement layerPlacement(const QRect& area, const QRect& available);

} // namespace lumora
