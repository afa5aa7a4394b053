#pragma once

#include <QByteArray>
#include <QImage>

namespace lumora::tests {

/// The PNG file of a picture without transparency. The toolkit's own are a third larger: they
/// filter what large even areas are better without.
[[nodiscard]] QByteArray compressedPng(const QImage& image);

} // namespace lumora::tests
