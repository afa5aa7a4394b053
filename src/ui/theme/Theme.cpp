#include "ui/theme/Theme.h"

#include <QApplication>
#include <QFontInfo>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace lumora {

namespace {

constexpr double readableText = 4.5;
constexpr double readableSymbol = 3.0;

constexpr double secondaryLight = 0.64;
constexpr double secondaryDark = 0.64;
constexpr double hover = 0.07;
constexpr double pressed = 0.13;

/// The text sizes, in pixels, between which a point is a pixel: 10 and 11 typographic points.
constexpr double smallestCommonText = 10 * 96 / 72.0;
constexpr double largestCommonText = 11 * 96 / 72.0;

/// The pixels of a point where text is `textPixels` high. Steps of a sixteenth keep the panel's
/// width whole, and hide that toolkits round text sizes.
double pointFor(double textPixels) {
    constexpr double steps = 16;
    const double common = std::clamp(textPixels, smallestCommonText, largestCommonText);
    return std::max(1.0, std::round(textPixels / common * steps)) / steps;
}

double sizeFactor(TextRole role) {
    switch (role) {
    case TextRole::Title3:
        return 1.15;
    case TextRole::Headline:
    case TextRole::Body:
        return 1.0;
    case TextRole::Callout:
        return 0.92;
    case TextRole::Caption:
    case TextRole::Caption2:
        return 0.77;
    }
    Q_UNREACHABLE();
}

/// The weights that texts have.
constexpr std::array weights = {QFont::Normal, QFont::Medium, QFont::DemiBold, QFont::Bold};

/// `base` in the size of texts of `role`.
QFont sized(QFont base, TextRole role) {
    if (base.pointSizeF() > 0)
        base.setPointSizeF(base.pointSizeF() * sizeFactor(role));
    else
        base.setPixelSize(std::max(1, int(std::lround(base.pixelSize() * sizeFactor(role)))));
    return base;
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(float(opacity));
    return color;
}

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// Whether the primary colour at `opacity` can be read on `background`, also under the pointer.
bool isReadable(const QColor& primary, double opacity, const QColor& background) {
    const QColor hovered = laidOver(withOpacity(primary, hover), background);
    return contrastRatio(withOpacity(primary, opacity), hovered) >= readableText;
}

/// `color`, moved towards `primary` until it can be read on `ground`.
QColor madeReadable(const QColor& color, const QColor& primary, const QColor& ground) {
    constexpr double step = 0.05;
    QColor result = color;
    for (double share = step; share < 1 && contrastRatio(result, ground) < readableText;
         share += step)
        result = laidOver(withOpacity(primary, share), color);
    return result;
}

/// The first of `colors` that can be read on `ground`. One of black and white always can.
QColor readableOn(const QColor& ground, std::initializer_list<QColor> colors) {
    const auto* const found = std::ranges::find_if(
        colors, [&](const QColor& color) { return contrastRatio(color, ground) >= readableText; });
    return found != colors.end() ? *found : Qt::black;
}

} // namespace

QColor laidOver(const QColor& foreground, const QColor& background) {
    const auto mixed = [alpha = foreground.alphaF()](float over, float under) {
        return over * alpha + under * (1 - alpha);
    };
    return QColor::fromRgbF(
        mixed(foreground.redF(), background.redF()),
        mixed(foreground.greenF(), background.greenF()),
        mixed(foreground.blueF(), background.blueF()));
}

double contrastRatio(const QColor& foreground, const QColor& background) {
    const double a = luminance(laidOver(foreground, background));
    const double b = luminance(background);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

Theme::Theme(ColorScheme scheme, const QFont& baseFont)
    : m_scheme(scheme)
    , m_point(pointFor(QFontInfo(baseFont).pixelSize())) {
    for (std::size_t role = 0; role < textRoleCount; ++role) {
        for (std::size_t i = 0; i < weights.size(); ++i) {
            QFont& font = m_fonts[role][i];
            font = sized(baseFont, TextRole(role));
            font.setWeight(weights[i]);
        }
    }
    const bool dark = scheme == ColorScheme::Dark;
    m_background = dark ? QColor(0x26, 0x27, 0x2b) : QColor(0xfb, 0xfb, 0xfc);
    m_primary = dark ? QColor(0xf2, 0xf2, 0xf4) : QColor(0x1d, 0x1d, 0x1f);
    m_accent = dark ? QColor(0x6c, 0xb0, 0xff) : QColor(0x1f, 0x6f, 0xeb);
    fitToBackground();
}

Theme::Theme(const QPalette& desktopPalette, const QFont& baseFont)
    : Theme(
          desktopPalette.color(QPalette::Window).lightnessF() < 0.5F ? ColorScheme::Dark
                                                                     : ColorScheme::Light,
          baseFont) {
    const QColor background = desktopPalette.color(QPalette::Window);
    const QColor text = desktopPalette.color(QPalette::WindowText);
    // The secondary text has to stay readable too.
    const bool dark = m_scheme == ColorScheme::Dark;
    if (isReadable(text, dark ? secondaryDark : secondaryLight, background)) {
        m_background = background;
        m_primary = text;
    }
    setAccent(desktopPalette.color(QPalette::Highlight));
    fitToBackground();
}

void Theme::setAccent(const QColor& accent) {
    if (contrastRatio(accent, m_background) >= readableSymbol)
        m_accent = accent;
}

void Theme::fitToBackground() {
    const bool dark = m_scheme == ColorScheme::Dark;
    const QColor orange = dark ? QColor(0xff, 0xb0, 0x57) : QColor(0xb5, 0x47, 0x08);
    const QColor green = dark ? QColor(0x5f, 0xd3, 0x7a) : QColor(0x1a, 0x7f, 0x37);
    // Orange texts stand in clickable rows, green ones do not.
    const QColor hovered = laidOver(color(ColorRole::Hover), m_background);
    m_orange = madeReadable(orange, m_primary, hovered);
    m_green = madeReadable(green, m_primary, m_background);
}

QColor Theme::color(ColorRole role) const {
    const bool dark = m_scheme == ColorScheme::Dark;
    switch (role) {
    case ColorRole::Background:
        return m_background;
    case ColorRole::Raised:
        return dark ? laidOver(color(ColorRole::Hover), m_background) : m_background;
    case ColorRole::Primary:
        return m_primary;
    case ColorRole::Secondary:
        return primaryAt(secondaryLight, secondaryDark);
    case ColorRole::Tertiary:
        return primaryAt(0.40, 0.42);
    case ColorRole::Quaternary:
        return primaryAt(0.10, 0.14);
    case ColorRole::Hover:
        return primaryAt(hover, hover);
    case ColorRole::Pressed:
        return primaryAt(pressed, pressed);
    case ColorRole::Divider:
        return dark ? withOpacity(Qt::white, 0.10) : withOpacity(Qt::black, 0.09);
    case ColorRole::Accent:
        return m_accent;
    case ColorRole::OnAccent:
        return readableOn(m_accent, {m_background, m_primary, Qt::white, Qt::black});
    case ColorRole::Orange:
        return m_orange;
    case ColorRole::Green:
        return m_green;
    }
    Q_UNREACHABLE();
}

QColor Theme::primaryAt(double light, double dark) const {
    return withOpacity(m_primary, m_scheme == ColorScheme::Dark ? dark : light);
}

QFont Theme::font(TextRole role, QFont::Weight weight) const {
    const auto* const wanted =
        std::ranges::find(weights, role == TextRole::Headline ? QFont::Bold : weight);
    Q_ASSERT(wanted != weights.end());
    return m_fonts[std::size_t(role)][std::size_t(wanted - weights.begin())];
}

int Theme::pixels(double points) const {
    return int(std::lround(exact(points)));
}

QMargins Theme::pixels(const QMargins& points) const {
    return {
        pixels(points.left()), pixels(points.top()), pixels(points.right()),
        pixels(points.bottom())};
}

bool motionAllowed(const Theme& theme) {
    // A style made for a desktop knows its wish as well. Qt's own "general effects" are about menus
    // sliding in, and off on every Linux desktop.
    return theme.allowsMotion() &&
           QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
}

} // namespace lumora
