#pragma once

#include <QMargins>

/// Distances that several parts of the panel share, in points of the design.
namespace lumora::PanelMetrics {

/// Of the panel's content.
inline constexpr int width = 320;

/// From the panel's edge to what it shows.
inline constexpr int padding = 12;

/// How far the ground of a clickable row reaches out beyond its content, into the padding.
inline constexpr int rowReach = 4;

/// From the ground of a clickable row to its content.
inline constexpr QMargins clickableRow{rowReach, 3, rowReach, 3};

/// Of the ground and the focus ring of what can be pressed.
inline constexpr double cornerRadius = 5;

/// Around what is not a clickable row, so that its content lines up with theirs.
inline constexpr QMargins besideRows{rowReach, 0, rowReach, 0};

/// How far the ground of a section's header reaches above and below its content. Whatever stands
/// in one column with sections begins with as much.
inline constexpr int headerReach = 2;
inline constexpr QMargins besideSections{rowReach, headerReach, rowReach, 0};
inline constexpr QMargins sectionHeader{rowReach, headerReach, rowReach, headerReach};

/// From the content of a small button, such as a symbol, to the edge of its ground.
inline constexpr QMargins button{3, 1, 3, 1};

} // namespace lumora::PanelMetrics
