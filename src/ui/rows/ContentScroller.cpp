#include "ui/rows/ContentScroller.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace lumora {

namespace {

// In pixels: the mark is for the pointer, which does not grow with the text.
constexpr int revealMargin = 12; ///< what stays visible around a focused widget
constexpr int thumbThickness = 4;
constexpr int thumbInset = 3; ///< from the mark to the edges
constexpr int shortestThumb = 24;

} // namespace

ScrollThumb::ScrollThumb(const ThemeSource& themes, QScrollBar* bar, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_bar(bar) {
    setFixedWidth(thumbThickness + 2 * thumbInset);
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
    const int track = height() - 2 * thumbInset;
    const int range = m_bar->maximum() - m_bar->minimum();
    const int page = std::max(1, m_bar->pageStep());
    const int length = std::min(track, std::max(shortestThumb, track * page / (page + range)));
    const int top = range == 0 ? 0 : (track - length) * (m_bar->value() - m_bar->minimum()) / range;
    return {width() - thumbInset - thumbThickness, thumbInset + top, thumbThickness, length};
}

int ScrollThumb::travel() const {
    return height() - 2 * thumbInset - thumbRect().height();
}

void ScrollThumb::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_themes.theme().color(ColorRole::Tertiary));
    painter.drawRoundedRect(thumbRect(), thumbThickness / 2.0, thumbThickness / 2.0);
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
    const int top = event->position().toPoint().y() - m_grip - thumbInset;
    m_bar->setValue(m_bar->minimum() + top * (m_bar->maximum() - m_bar->minimum()) / way);
}

ContentScroller::ContentScroller(const ThemeSource& themes, QWidget* content, QWidget* parent)
    : QScrollArea(parent)
    , m_thumb(new ScrollThumb(themes, verticalScrollBar(), this)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(content);
    // The panel paints the background, with its round corners.
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    m_thumb->raise();

    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && widget() != now && widget()->isAncestorOf(now))
            ensureWidgetVisible(now, 0, revealMargin);
    });
}

int ContentScroller::contentHeight(int width) const {
    QWidget* content = widget();
    content->ensurePolished();
    const int wanted = content->hasHeightForWidth() ? content->heightForWidth(width)
                                                    : content->sizeHint().height();
    return std::clamp(wanted, content->minimumHeight(), content->maximumHeight());
}

void ContentScroller::setContentWidth(int width) {
    if (m_contentWidth == width)
        return;
    m_contentWidth = width;
    updateGeometry();
}

QSize ContentScroller::sizeHint() const {
    return {m_contentWidth, contentHeight(m_contentWidth)};
}

QSize ContentScroller::minimumSizeHint() const {
    return {0, 0};
}

bool ContentScroller::isScrollable() const {
    return verticalScrollBar()->maximum() > 0;
}

void ContentScroller::scrollByPage(int pages) {
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(bar->value() + pages * bar->pageStep());
}

bool ContentScroller::eventFilter(QObject* watched, QEvent* event) {
    const bool handled = QScrollArea::eventFilter(watched, event);
    // The content has laid itself out at its old size by now, and knows what it would like.
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        placeContent();
        updateGeometry();
        Q_EMIT contentChanged();
    }
    return handled;
}

void ContentScroller::keyPressEvent(QKeyEvent* event) {
    event->ignore(); // what the arrow keys lead to is not for this to say
}

void ContentScroller::resizeEvent(QResizeEvent* event) {
    placeContent();
    QScrollArea::resizeEvent(event);
    m_thumb->setGeometry(width() - m_thumb->width(), 0, m_thumb->width(), height());
}

void ContentScroller::placeContent() {
    widget()->resize(width(), contentHeight(width()));
}

} // namespace lumora
