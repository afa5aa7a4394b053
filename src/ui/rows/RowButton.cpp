#include "ui/rows/RowButton.h"

#include "ui/rows/RowPainter.h"
#include "ui/theme/PanelMetrics.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

#include <cmath>

namespace lumora {

namespace {

/// Tells screen readers that these states of `widget` are others now.
void tellChanged(QWidget* widget, QAccessible::State changed) {
    QAccessibleStateChangeEvent event(widget, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace

RowButton::RowButton(
    const ThemeSource& themes, QMargins padding, Highlight highlight, QWidget* parent)
    : QAbstractButton(parent)
    , m_themes(themes)
    , m_highlight(highlight) {
    setContentsMargins(padding);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
    connect(&m_themes, &ThemeSource::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void RowButton::setContent(RowContent content) {
    if (m_content == content)
        return;
    m_content = std::move(content);
    updateGeometry();
    update();
}

RowGeometry RowButton::itemGeometry() const {
    return layOutRow(m_content, theme(), contentsRect().width());
}

QPointF RowButton::contentOrigin() const {
    const QRect room = contentsRect();
    return {double(room.left()), room.top() + (room.height() - itemGeometry().height) / 2};
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

QSize RowButton::sizeHint() const {
    const double width = naturalRowWidth(m_content, theme());
    const double height = layOutRow(m_content, theme(), width).height;
    return QSize(int(std::ceil(width)), int(std::ceil(height))).grownBy(contentsMargins());
}

QSize RowButton::minimumSizeHint() const {
    return {0, sizeHint().height()};
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
    if (m_highlight == Highlight::OnHover && m_hovering && isEnabled()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme().color(ColorRole::Hover));
        painter.drawRoundedRect(rect(), PanelMetrics::cornerRadius, PanelMetrics::cornerRadius);
    }
    paintRow(painter, contentOrigin(), m_content, itemGeometry(), theme());
}

} // namespace lumora
