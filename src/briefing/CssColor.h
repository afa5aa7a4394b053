#pragma once

#include <QStringView>

#include <optional>

namespace lumora {

/// An opaque sRGB colour, each component from 0 to 1.
struct CssColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const CssColor&) const = default;
};

/// Reads a six-digit hexadecimal colour code, with or without a leading "#" and blanks around it;
/// absent for anything else.
[[nodiscard]] std::optional<CssColor> parseCssColor(QStringView text);

} // namespace lumora
