#include "ui/settings/FormPainting.h"

#include <QPainter>
#include <QVariant>
#include <QWidget>

namespace lumora::Form {

namespace {

constexpr char mnemonicsProperty[] = "showsMnemonics";
constexpr double ringWidth = 2;

QColor raised(const Theme& theme) {
    return laidOver(theme.color(ColorRole::Hover), theme.color(ColorRole::Background));
}

} // namespace

QColor windowColor(const Theme& theme) {
    const bool dark = theme.scheme() == ColorScheme::Dark;
    return dark ? theme.color(ColorRole::Background) : raised(theme);
}

QColor cardColor(const Theme& theme) {
    const bool dark = theme.scheme() == ColorScheme::Dark;
    return dark ? raised(theme) : theme.color(ColorRole::Background);
}

QColor controlColor(const Theme& theme, Emphasis emphasis) {
    const QColor ground = theme.color(ColorRole::Hover);
    switch (emphasis) {
    case Emphasis::None:
        return ground;
    case Emphasis::Hover:
        return theme.color(ColorRole::Quaternary);
    case Emphasis::Pressed:
        return laidOver(ground, theme.color(ColorRole::Quaternary));
    }
    Q_UNREACHABLE();
}

QPalette popupPalette(const Theme& theme) {
    QPalette colors(cardColor(theme));
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
        colors.setColor(role, cardColor(theme));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colors.setColor(role, theme.color(ColorRole::Primary));
    colors.setColor(QPalette::Highlight, theme.color(ColorRole::Accent));
    colors.setColor(QPalette::HighlightedText, theme.color(ColorRole::Background));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colors.setColor(QPalette::Disabled, role, theme.color(ColorRole::Tertiary));
    return colors;
}

void paintGround(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, radius, radius);
}

void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, const Theme& theme) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme.color(ColorRole::Accent), ringWidth));
    painter.setBrush(Qt::NoBrush);
    constexpr double inset = ringWidth / 2;
    painter.drawRoundedRect(
        rect.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

void paintLabel(
    QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text,
    const QWidget& owner) {
    const bool shows = owner.window()->property(mnemonicsProperty).toBool();
    const int mnemonic = shows ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    painter.drawText(rect, int(alignment) | Qt::TextSingleLine | mnemonic, text);
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
