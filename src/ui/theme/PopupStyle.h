#pragma once

#include <QProxyStyle>

class QMenu;
class QStyleOptionMenuItem;

namespace lumora {

class ThemeSource;

/// Draws menus and tool tips in the theme: on a raised ground with a hairline around it, with round
/// corners where windows have any. Icons are left out: the toolkit's are made for other colours.
class PopupStyle : public QProxyStyle {
    Q_OBJECT

public:
    /// `themes` must outlive the style.
    explicit PopupStyle(const ThemeSource& themes);

    /// Lets `toolTip`, a window of the toolkit's that has just been made, look so as long as the
    /// style lives.
    void dress(QWidget& toolTip);

    void drawControl(
        ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    int pixelMetric(
        PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(
        ContentsType type, const QStyleOption* option, const QSize& size,
        const QWidget* widget) const override;
    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* answer) const override;

private:
    void drawGround(QPainter& painter, const QWidget* window, const QRect& rect) const;
    void drawSeparator(QPainter& painter, const QRect& rect) const;
    void drawItemGround(QPainter& painter, const QStyleOptionMenuItem& item) const;
    void drawItemMarks(QPainter& painter, const QStyleOptionMenuItem& item) const;
    void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& item) const;
    double radius(const QWidget* window) const;

    const ThemeSource& m_themes;
};

/// Gives `menu`, which has all its actions and was never shown, the style; it is deleted when it
/// closes. `themes` must outlive it.
void dressMenu(QMenu& menu, const ThemeSource& themes);

} // namespace lumora
