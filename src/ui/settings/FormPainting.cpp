#include "ui/settings/FormPainting.h"

#include "ui/rows/WidgetTexts.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QVariant>
#include <QWidget>

#include <algorithm>

namespace lumora::Form {

namespace {

constexpr char mnemonicsProperty[] = "showsMnemonics";

// In points.
constexpr int lowestControl = 30;
constexpr double controlRadius = 7;
constexpr double ringWidth = 2;

/// The same ink, as opaque as both together.
QColor stronger(QColor ink, const QColor& more) {
    ink.setAlphaF(std::min(1.0F, ink.alphaF() + more.alphaF()));
    return ink;
}

} // namespace

int controlHeight(const QFont& font, const Theme& theme) {
    return std::max(
        theme.pixels(lowestControl), QFontMetrics(font).height() + theme.pixels(controlPadding));
}

int textWidth(const QFont& font, const QString& text) {
    return QFontMetrics(font).size(Qt::TextSingleLine | Qt::TextHideMnemonic, text).width();
}

QColor windowColor(const Theme& theme) {
    if (theme.scheme() == ColorScheme::Dark)
        return theme.color(ColorRole::Background);
    return laidOver(theme.color(ColorRole::Hover), theme.color(ColorRole::Background));
}

QColor cardColor(const Theme& theme) {
    return theme.color(ColorRole::Raised);
}

Emphasis emphasisOf(const QWidget& control, bool isDown) {
    if (isDown)
        return Emphasis::Pressed;
    return control.underMouse() && control.isEnabled() ? Emphasis::Hover : Emphasis::None;
}

QColor controlColor(const Theme& theme, Emphasis emphasis) {
    const QColor ground = theme.color(ColorRole::Hover);
    switch (emphasis) {
    case Emphasis::None:
        return ground;
    case Emphasis::Hover:
        return theme.color(ColorRole::Quaternary);
    case Emphasis::Pressed:
        return stronger(theme.color(ColorRole::Quaternary), ground);
    }
    Q_UNREACHABLE();
}

void paintGround(
    QPainter& painter, const QRectF& rect, double radius, const QColor& color, const Theme& theme) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, theme.exact(radius), theme.exact(radius));
}

void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, const Theme& theme) {
    const double width = theme.exact(ringWidth);
    const double inset = width / 2;
    const double corner = theme.exact(radius) - inset;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme.color(ColorRole::Accent), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), corner, corner);
}

void paintControl(
    QPainter& painter, const QWidget& control, Emphasis emphasis, const Theme& theme) {
    paintGround(painter, control.rect(), controlRadius, controlColor(theme, emphasis), theme);
    if (control.hasFocus())
        paintFocusRing(painter, control.rect(), controlRadius, theme);
}

void paintLabel(
    QPainter& painter, const QRect& rect, Qt::Alignment alignment, const QString& text,
    const QWidget& owner, bool wraps) {
    const bool shows = owner.window()->property(mnemonicsProperty).toBool();
    const int mnemonic = shows ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    const QString cut = wraps || textWidth(painter.font(), text) <= rect.width()
                            ? text
                            : painter.fontMetrics().elidedText(
                                  text, Qt::ElideRight, rect.width(), Qt::TextShowMnemonic);
    // Each text runs the way it is written, whatever the form does.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    const auto flags = QStyle::visualAlignment(owner.layoutDirection(), alignment);
    painter.drawText(
        rect, int(flags) | (wraps ? Qt::TextWordWrap : Qt::TextSingleLine) | mnemonic, cut);
}

bool answersWithWhole(QWidget& widget, QEvent& event, const QString& text, int room) {
    if (event.type() != QEvent::ToolTip || textWidth(widget.font(), text) <= room)
        return false;
    const auto& help = static_cast<const QHelpEvent&>(event);
    QString plain = text;
    return showToolTip(widget, help.globalPos(), {plain.remove(u'&')});
}

void setShowsMnemonics(QWidget& window, bool shows) {
    if (window.property(mnemonicsProperty).toBool() == shows)
        return;
    window.setProperty(mnemonicsProperty, shows);
    const auto widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets)
        widget->update();
}

} // namespace lumora::Form
