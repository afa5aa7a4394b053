#pragma once

#include <QImage>
#include <QPoint>

namespace lumora::tests {

/// How two pictures differ.
struct PictureDifference {
    bool sameSize = true;
    int pixels = 0; ///< that differ by more than what is let through
    QPoint first;   ///< the topmost of them
    QImage marked;  ///< the second picture, pale, with these pixels in red; null without any

    [[nodiscard]] bool isNone() const { return sameSize && pixels == 0; }
};

/// Compares two pictures without transparency. Let through are small differences of any pixel, and
/// one larger difference by itself where an edge was smoothed otherwise: the pixel lies on an edge
/// in both pictures, each has its colour within one pixel in the other, and nothing beside it
/// differs.
[[nodiscard]] PictureDifference comparePictures(const QImage& accepted, const QImage& drawn);

} // namespace lumora::tests
