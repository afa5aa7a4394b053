#pragma once

#include "ui/theme/Theme.h"

#include <QRectF>

class QEvent;
class QPainter;
class QWidget;

/// What the parts of a settings form have in common.
namespace lumora::Form {

/// From the edge of a control to its text, in points.
inline constexpr int controlPadding = 10;

/// The height in pixels of what is typed into or pressed and shows a text in `font`.
[[nodiscard]] int controlHeight(const QFont& font, const Theme& theme);

/// The width in pixels of `text` on one line. The ampersand of its mnemonic takes none.
[[nodiscard]] int textWidth(const QFont& font, const QString& text);

/// The ground that the cards lie on, and theirs. The lighter one is the card's.
[[nodiscard]] QColor windowColor(const Theme& theme);
[[nodiscard]] QColor cardColor(const Theme& theme);

/// How strong the ground of a control on a card is: under the pointer, and while it is held down
/// or shows its choices.
enum class Emphasis { None, Hover, Pressed };
[[nodiscard]] Emphasis emphasisOf(const QWidget& control, bool isDown);
[[nodiscard]] QColor controlColor(const Theme& theme, Emphasis emphasis);

/// Draws a round ground; `radius` in points.
void paintGround(
    QPainter& painter, const QRectF& rect, double radius, const QColor& color, const Theme& theme);

/// The ring around whatever has the keyboard; `radius` in points.
void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, const Theme& theme);

/// The ground of `control`, which covers all of it, and its ring where it has the keyboard.
void paintControl(QPainter& painter, const QWidget& control, Emphasis emphasis, const Theme& theme);

/// Draws a text of `owner`, its mnemonic underlined while the window shows them. It is on one line
/// and ends with "…" where it has no room, unless it wraps. Left is right where things are read
/// from there.
void paintLabel(
    QPainter& painter, const QRect& rect, Qt::Alignment alignment, const QString& text,
    const QWidget& owner, bool wraps = false);

/// Answers `event` where it asks `widget` for its tool tip and there is less `room` than `text`
/// needs, both in pixels: the tool tip says it whole. False for all else.
bool answersWithWhole(QWidget& widget, QEvent& event, const QString& text, int room);

/// Lets every control in `window` underline its mnemonic, or none.
void setShowsMnemonics(QWidget& window, bool shows);

} // namespace lumora::Form
