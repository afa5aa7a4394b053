#include "ui/window/PanelScroller.h"

#include "ui/window/ScrollThumb.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>

#include <algorithm>

namespace lumora {

namespace {

constexpr int revealMargin = 12; ///< what stays visible around a focused widget

} // namespace

PanelScroller::PanelScroller(const ThemeSource& themes, QWidget* content, QWidget* parent)
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

int PanelScroller::contentHeight(int width) const {
    QWidget* content = widget();
    content->ensurePolished();
    const int wanted = content->hasHeightForWidth() ? content->heightForWidth(width)
                                                    : content->sizeHint().height();
    return std::clamp(wanted, content->minimumHeight(), content->maximumHeight());
}

bool PanelScroller::isScrollable() const {
    return verticalScrollBar()->maximum() > 0;
}

void PanelScroller::scrollByPage(int pages) {
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(bar->value() + pages * bar->pageStep());
}

bool PanelScroller::eventFilter(QObject* watched, QEvent* event) {
    const bool handled = QScrollArea::eventFilter(watched, event);
    // The content has laid itself out at its old size by now, and knows what it would like.
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        placeContent();
        Q_EMIT contentChanged();
    }
    return handled;
}

void PanelScroller::resizeEvent(QResizeEvent* event) {
    placeContent();
    QScrollArea::resizeEvent(event);
    m_thumb->setGeometry(width() - m_thumb->width(), 0, m_thumb->width(), height());
}

void PanelScroller::placeContent() {
    widget()->resize(width(), contentHeight(width()));
}

} // namespace lumora
