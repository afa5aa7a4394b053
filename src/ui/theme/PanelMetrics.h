#pragma once

#include <QMargins>

/// Distances that several parts of the panel share, in points.
namespace lumora::PanelMetrics {

/// Of the panel's content.
inline constexpr int width = 320;

/// From the panel's edge to what it shows.
inline constexpr int padding = 12;

/// How far the ground of a clickable row reaches out beyond its content, into the padding.
inline constexpr int rowReach = 4;

/// Of the ground and the focus ring of what can be pressed.
inline constexpr double cornerRadius = 5;

/// Around what is not a clickable row, so that its content lines up with theirs.
inline constexpr QMargins besideRows{rowReach, 0, rowReach, 0};

} // namespace lumora::PanelMetrics
