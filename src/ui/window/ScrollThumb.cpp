#include "ui/window/ScrollThumb.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace lumora {

namespace {

constexpr int thickness = 4;
constexpr int inset = 3; ///< from the mark to the edges
constexpr int shortest = 24;

} // namespace

ScrollThumb::ScrollThumb(const ThemeSource& themes, QScrollBar* bar, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_bar(bar) {
    setFixedWidth(thickness + 2 * inset);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    connect(bar, &QScrollBar::rangeChanged, this, &ScrollThumb::follow);
    connect(bar, &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&themes, &ThemeSource::changed, this, qOverload<>(&QWidget::update));
    follow();
}

void ScrollThumb::follow() {
    setVisible(m_bar->maximum() > m_bar->minimum());
    update();
}

QRect ScrollThumb::thumbRect() const {
    const int track = height() - 2 * inset;
    const int range = m_bar->maximum() - m_bar->minimum();
    const int page = std::max(1, m_bar->pageStep());
    const int length = std::min(track, std::max(shortest, track * page / (page + range)));
    const int top = range == 0 ? 0 : (track - length) * (m_bar->value() - m_bar->minimum()) / range;
    return {width() - inset - thickness, inset + top, thickness, length};
}

int ScrollThumb::travel() const {
    return height() - 2 * inset - thumbRect().height();
}

void ScrollThumb::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_themes.theme().color(ColorRole::Tertiary));
    painter.drawRoundedRect(thumbRect(), thickness / 2.0, thickness / 2.0);
}

void ScrollThumb::mousePressEvent(QMouseEvent* event) {
    const QRect thumb = thumbRect();
    const int y = event->position().toPoint().y();
    const bool onThumb = y >= thumb.top() && y <= thumb.bottom();
    m_grip = onThumb ? y - thumb.top() : thumb.height() / 2;
    mouseMoveEvent(event);
}

void ScrollThumb::mouseMoveEvent(QMouseEvent* event) {
    const int way = travel();
    if (way <= 0)
        return;
    const int top = event->position().toPoint().y() - m_grip - inset;
    m_bar->setValue(m_bar->minimum() + top * (m_bar->maximum() - m_bar->minimum()) / way);
}

} // namespace lumora
