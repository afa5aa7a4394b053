#include "ui/rows/RowButton.h"

#include "ui/theme/PanelMetrics.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

namespace lumora {

namespace {

/// Tells screen readers that these states of `widget` are others now.
void tellChanged(QWidget* widget, QAccessible::State changed) {
    QAccessibleStateChangeEvent event(widget, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace

RowButton::RowButton(const ThemeSource& themes, QMargins padding, QWidget* parent)
    : RowWidget(themes, padding, parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
}

void RowButton::setBusy(bool busy) {
    if (m_busy == busy)
        return;
    m_busy = busy;
    QAccessible::State changed;
    changed.busy = true;
    tellChanged(this, changed);
}

void RowButton::setExpanded(bool expanded) {
    if (m_expanded == expanded)
        return;
    m_expanded = expanded;
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    tellChanged(this, changed);
}

void RowButton::enterEvent(QEnterEvent* event) {
    setHovering(true);
    QAbstractButton::enterEvent(event);
}

void RowButton::leaveEvent(QEvent* event) {
    setHovering(false);
    QAbstractButton::leaveEvent(event);
}

void RowButton::hideEvent(QHideEvent* event) {
    setHovering(false); // a window that goes away tells nobody that the pointer left
    QAbstractButton::hideEvent(event);
}

void RowButton::setHovering(bool hovering) {
    if (m_hovering == hovering)
        return;
    m_hovering = hovering;
    update();
}

void RowButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
        event->ignore(); // whoever holds the buttons knows which one is next
        break;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void RowButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (const auto role = ground()) {
        const double radius = theme().exact(PanelMetrics::cornerRadius);
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme().color(*role));
        painter.drawRoundedRect(rect(), radius, radius);
    }
    paintContent(painter);
}

std::optional<ColorRole> RowButton::ground() const {
    if (!isEnabled())
        return std::nullopt;
    if (isDown() && !m_busy)
        return ColorRole::Pressed;
    return m_hovering ? std::optional(ColorRole::Hover) : std::nullopt;
}

} // namespace lumora
