#include "pictures/PictureComparison.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace lumora::tests {

namespace {

/// Of a channel, out of 255.
constexpr int smallDifference = 6;

/// How far the colours are apart, in the channel in which they are farthest.
int distance(QRgb a, QRgb b) {
    return std::max(
        {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
         std::abs(qBlue(a) - qBlue(b))});
}

bool areAlike(QRgb a, QRgb b) {
    return distance(a, b) <= smallDifference;
}

/// How many pixels around `at` in `image`, itself left out, `holds(color)` is true of.
template <typename Predicate>
int countAround(const QImage& image, QPoint at, Predicate holds) {
    int count = 0;
    for (int y = std::max(0, at.y() - 1); y <= std::min(image.height() - 1, at.y() + 1); ++y)
        for (int x = std::max(0, at.x() - 1); x <= std::min(image.width() - 1, at.x() + 1); ++x)
            if (QPoint(x, y) != at && holds(image.pixel(x, y)))
                ++count;
    return count;
}

bool isOnEdge(const QImage& image, QPoint at) {
    const QRgb own = image.pixel(at);
    return countAround(image, at, [&](QRgb color) { return !areAlike(color, own); }) > 0;
}

bool isNearby(QRgb color, const QImage& image, QPoint at) {
    return countAround(image, at, [&](QRgb other) { return areAlike(color, other); }) > 0;
}

/// Whether `at` may be an edge that was smoothed otherwise.
bool isSmoothing(const QImage& a, const QImage& b, QPoint at) {
    return isOnEdge(a, at) && isOnEdge(b, at) && isNearby(a.pixel(at), b, at) &&
           isNearby(b.pixel(at), a, at);
}

/// White where the pictures are alike, black where they are not.
QImage differenceMap(const QImage& a, const QImage& b) {
    QImage map(a.size(), QImage::Format_RGB32);
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            map.setPixel(
                x, y, areAlike(a.pixel(x, y), b.pixel(x, y)) ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    return map;
}

std::vector<QPoint> differences(const QImage& a, const QImage& b) {
    const QImage map = differenceMap(a, b);
    const auto isDifferent = [](QRgb color) { return qRed(color) == 0; };
    std::vector<QPoint> found;
    for (int y = 0; y < map.height(); ++y) {
        for (int x = 0; x < map.width(); ++x) {
            const QPoint at(x, y);
            if (!isDifferent(map.pixel(at)))
                continue;
            const bool isAlone = countAround(map, at, isDifferent) == 0;
            if (!isAlone || !isSmoothing(a, b, at))
                found.push_back(at);
        }
    }
    return found;
}

QImage withMarks(QImage image, const std::vector<QPoint>& marks) {
    const auto pale = [](int channel) { return 255 - (255 - channel) / 4; };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb color = image.pixel(x, y);
            image.setPixel(x, y, qRgb(pale(qRed(color)), pale(qGreen(color)), pale(qBlue(color))));
        }
    }
    for (const QPoint& mark : marks)
        image.setPixel(mark, qRgb(255, 0, 0));
    return image;
}

} // namespace

PictureDifference comparePictures(const QImage& accepted, const QImage& drawn) {
    if (accepted.size() != drawn.size())
        return {.sameSize = false, .first = {}, .marked = {}};
    const QImage a = accepted.convertToFormat(QImage::Format_RGB32);
    const QImage b = drawn.convertToFormat(QImage::Format_RGB32);
    const std::vector<QPoint> found = differences(a, b);
    if (found.empty())
        return {.first = {}, .marked = {}};
    return {.pixels = int(found.size()), .first = found.front(), .marked = withMarks(b, found)};
}

} // namespace lumora::tests
