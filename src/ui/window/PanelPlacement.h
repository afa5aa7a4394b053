#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>

namespace lumora {

/// A monitor, in points.
struct PlacementScreen {
    QRect geometry;
    QRect available;  ///< without the bars that reserve room for themselves
    double scale = 1; ///< device pixels per point
};

/// What is known about where the status item is, from the best source to the worst.
struct AnchorEvidence {
    /// The pointer as it pressed the item, in points. Absent where nothing was pressed, and where
    /// the window system does not tell the truth about the pointer.
    std::optional<QPoint> pointer = std::nullopt;

    /// Where the host of the item says it was pressed, in device pixels; often wrong.
    std::optional<QPoint> activation = std::nullopt;

    /// The last anchor that was known, in points.
    std::optional<QPoint> lastGood = std::nullopt;

    /// Whether the item or its menu has just been pressed, so that the pointer would tell.
    bool pressed = false;
};

/// The place that the panel belongs to.
struct PanelAnchor {
    QPoint point;       ///< in points
    int screen = 0;     ///< index of the screen that holds it
    bool known = false; ///< false for a mere guess, which is not worth remembering

    bool operator==(const PanelAnchor&) const = default;
};

/// The best anchor that `evidence` gives; failing all, the corner of the first screen where a
/// status area usually is. Absent without a screen.
[[nodiscard]] std::optional<PanelAnchor>
chooseAnchor(const AnchorEvidence& evidence, const QList<PlacementScreen>& screens);

/// The direction a panel grows in; the opposite edge stays where it is.
enum class PanelGrowth { Down, Up };

/// Where the panel is, in points.
struct PanelPlacement {
    QRect panel;
    PanelGrowth growth = PanelGrowth::Down;

    /// All that the panel may ever cover at this anchor, whatever its height.
    QRect reach;

    bool operator==(const PanelPlacement&) const = default;
};

/// Places a panel that would like to have `size` against the bar that holds `anchor`: below a top
/// bar, above a bottom one, beside a vertical one; never outside `screen`'s work area, and `gap`
/// points away from its edges. The panel is lower than `size` where there is not enough room.
[[nodiscard]] PanelPlacement
placePanel(QPoint anchor, const PlacementScreen& screen, const QSize& size, int gap);

} // namespace lumora
