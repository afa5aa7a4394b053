#pragma once

#include "ui/theme/Theme.h"

#include <QPalette>
#include <QRectF>

class QPainter;
class QWidget;

/// What the parts of a settings form have in common.
namespace lumora::Form {

/// The height of everything that is typed into or pressed, in points, and how round it is.
inline constexpr int controlHeight = 30;
inline constexpr double controlRadius = 7;

/// From the edge of a control to its text.
inline constexpr int controlPadding = 10;

/// The ground that the cards lie on, and theirs. The lighter one is the card's.
[[nodiscard]] QColor windowColor(const Theme& theme);
[[nodiscard]] QColor cardColor(const Theme& theme);

/// The ground of a control on a card: stronger under the pointer, stronger still when pressed.
enum class Emphasis { None, Hover, Pressed };
[[nodiscard]] QColor controlColor(const Theme& theme, Emphasis emphasis);

/// What menus and lists that pop up from the form are drawn with by the toolkit.
[[nodiscard]] QPalette popupPalette(const Theme& theme);

void paintGround(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

/// The ring around whatever has the keyboard.
void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, const Theme& theme);

/// Draws a text of the form in one line, its mnemonic underlined while the window shows them.
void paintLabel(
    QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text,
    const QWidget& owner);

/// Lets every control in `window` underline its mnemonic, or none.
void setShowsMnemonics(QWidget& window, bool shows);

} // namespace lumora::Form
