#include "views/RowButton.h"

#include "views/RowPainter.h"

#include <QKeyEvent>
#include <QPainter>

#include <cmath>

namespace lumora {

namespace {

constexpr double cornerRadius = 5;
constexpr double focusRingWidth = 2;

} // namespace

RowButton::RowButton(
    const ThemeSource& themes, QMargins padding, Highlight highlight, QWidget* parent)
    : QAbstractButton(parent)
    , m_themes(themes)
    , m_padding(padding)
    , m_highlight(highlight) {
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
    return layOutRow(m_content, theme(), width() - m_padding.left() - m_padding.right());
}

QSize RowButton::sizeHint() const {
    const double width = naturalRowWidth(m_content, theme());
    const double height = layOutRow(m_content, theme(), width).height;
    return QSize(int(std::ceil(width)), int(std::ceil(height))).grownBy(m_padding);
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
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void RowButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_highlight == Highlight::OnHover && m_hovering && isEnabled()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme().color(ColorRole::Hover));
        painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    }
    paintRow(
        painter, QPointF(m_padding.left(), m_padding.top()), m_content, itemGeometry(), theme());
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        const double inset = focusRingWidth / 2;
        painter.setPen(QPen(theme().color(ColorRole::Accent), focusRingWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(
            QRectF(rect()).adjusted(inset, inset, -inset, -inset), cornerRadius, cornerRadius);
    }
}

} // namespace lumora
