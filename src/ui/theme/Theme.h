#pragma once

#include <QColor>
#include <QFont>
#include <QMargins>
#include <QPalette>

#include <array>

namespace lumora {

/// What a colour is for. Tertiary and quaternary are for symbols and marks, never for text.
enum class ColorRole {
    Background,
    Raised, ///< the ground of what lies on or above the background, such as a card or a menu
    Primary,
    Secondary,
    Tertiary,
    Quaternary,
    Hover,   ///< the ground of a control under the pointer
    Pressed, ///< the same while it is held down
    Divider,
    Accent,
    OnAccent, ///< a text on the accent, such as one that is selected
    Orange,
    Green,
};

/// What a text is for; each is a fixed ratio of the desktop's own font size.
enum class TextRole { Headline, Title3, Body, Callout, Caption, Caption2 };
inline constexpr std::size_t textRoleCount = 6;

enum class ColorScheme { Light, Dark };

/// How the panel looks and moves: a value, made anew when the desktop's wishes change.
///
/// Everything is designed in points. A point follows the desktop's text size, so that a panel is
/// the same picture in any of them, only larger or smaller.
class Theme {
public:
    /// The program's own colours for `scheme`, with fonts sized from `baseFont`.
    Theme(ColorScheme scheme, const QFont& baseFont);

    /// The same with background, text and accent taken from the desktop's palette, as far as they
    /// can be read against each other.
    Theme(const QPalette& desktopPalette, const QFont& baseFont);

    /// Takes `accent` for what stands out, if symbols of it can be read on the background.
    void setAccent(const QColor& accent);

    ColorScheme scheme() const { return m_scheme; }

    /// Divider, hover and the greys carry their opacity: they are meant to lie on the background.
    QColor color(ColorRole role) const;

    /// Headline is bold by itself; every other role has the weight that is asked for: normal,
    /// medium, half bold or bold. Asked again, it is the same font, which has found its files.
    QFont font(TextRole role, QFont::Weight weight = QFont::Normal) const;

    /// What `points` of the design are in device-independent pixels, exactly and in whole ones. One
    /// is the other where texts have a common size, of 10 to 11 typographic points at 96 dpi.
    double exact(double points) const { return points * m_point; }

    int pixels(double points) const;

    QMargins pixels(const QMargins& points) const;

    /// Whether things may move; true unless the desktop asks for reduced motion.
    bool allowsMotion() const { return m_allowsMotion; }

    void setAllowsMotion(bool allowed) { m_allowsMotion = allowed; }

    /// Whether windows that pop up may have round corners; false unless the desktop blends windows
    /// into each other.
    bool roundsWindows() const { return m_roundsWindows; }

    void setRoundsWindows(bool rounds) { m_roundsWindows = rounds; }

    bool operator==(const Theme&) const = default;

private:
    /// One for each weight that texts have.
    using Weights = std::array<QFont, 4>;

    QColor primaryAt(double light, double dark) const;
    void fitToBackground();

    ColorScheme m_scheme;
    std::array<Weights, textRoleCount> m_fonts;
    double m_point; ///< device-independent pixels
    QColor m_background;
    QColor m_primary;
    QColor m_accent;
    QColor m_orange;
    QColor m_green;
    bool m_allowsMotion = true;
    bool m_roundsWindows = false;
};

/// What is seen where `foreground`, with its opacity, lies on an opaque `background`.
[[nodiscard]] QColor laidOver(const QColor& foreground, const QColor& background);

/// The contrast of `foreground` laid over `background`, from 1 to 21 (WCAG 2).
[[nodiscard]] double contrastRatio(const QColor& foreground, const QColor& background);

/// Whether things drawn with `theme` may move. Where the desktop asks for reduced motion, changes
/// happen at once.
[[nodiscard]] bool motionAllowed(const Theme& theme);

} // namespace lumora
