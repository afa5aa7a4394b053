#include "ui/panel/MenuBarView.h"

#include "briefing/ActionKeys.h"
#include "texts/Formatters.h"
#include "ui/access/FocusRing.h"
#include "ui/access/ReadingOrder.h"
#include "ui/panel/CaptureField.h"
#include "ui/panel/PanelFooter.h"
#include "ui/panel/PanelPlaceholder.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/ContentScroller.h"
#include "ui/rows/PaintedRow.h"
#include "ui/rows/WidgetTexts.h"
#include "ui/theme/PanelMetrics.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr QMargins headerPadding{12, 10, 12, 10};

/// A line between two parts of the panel.
class Divider final : public QWidget {
public:
    Divider(const ThemeSource& themes, QWidget* parent)
        : QWidget(parent)
        , m_themes(themes) {
        applyTheme();
        connect(&m_themes, &ThemeSource::changed, this, &Divider::applyTheme);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), m_themes.theme().color(ColorRole::Divider));
    }

private:
    void applyTheme() {
        constexpr int thickness = 1;
        setFixedHeight(std::max(1, m_themes.theme().pixels(thickness)));
        update();
    }

    const ThemeSource& m_themes;
};

/// The briefing, or what is there before one. Not a part of its own for those who hear the panel.
class Middle final : public QWidget, public SpokenAs<SpokenRole::Group> {
public:
    using QWidget::QWidget;
};

bool canTakeFocus(const QWidget& leaf) {
    return leaf.isVisible() && leaf.isEnabled() && !isDecoration(leaf);
}

bool isTabStop(const QWidget& leaf) {
    return canTakeFocus(leaf) && (leaf.focusPolicy() & Qt::TabFocus);
}

/// The first of `leaves` that is `wanted`, going from the one after `from` by `step`.
QWidget*
findStop(const QWidgetList& leaves, qsizetype from, int step, bool (*wanted)(const QWidget&)) {
    for (qsizetype i = from + step; i >= 0 && i < leaves.size(); i += step) {
        if (wanted(*leaves.at(i)))
            return leaves.at(i);
    }
    return nullptr;
}

} // namespace

MenuBarView::MenuBarView(const BriefingView::Dependencies& dependencies, QWidget* parent)
    : QWidget(parent)
    , m_themes(dependencies.themes)
    , m_header(new PaintedRow(dependencies.themes, headerPadding, this))
    , m_middle(new Middle)
    , m_placeholder(new PanelPlaceholder(dependencies.themes))
    , m_briefing(new BriefingView(dependencies))
    , m_scroller(new ContentScroller(dependencies.themes, m_middle, this))
    , m_capture(new CaptureField(dependencies.themes, dependencies.clock, this))
    , m_footer(new PanelFooter(dependencies.themes, this))
    , m_ring(new FocusRing(dependencies.themes, this)) {
    // Where the keyboard is when the panel opens: nothing happens there, and it is read first.
    m_header->setFocusPolicy(Qt::TabFocus);
    setFocusProxy(m_header);
    auto* middle = new QVBoxLayout(m_middle);
    middle->setContentsMargins({});
    middle->setSpacing(0);
    middle->addWidget(m_placeholder);
    middle->addWidget(m_briefing);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_header);
    layout->addWidget(new Divider(dependencies.themes, this));
    layout->addWidget(m_scroller, 1);
    layout->addWidget(new Divider(dependencies.themes, this));
    layout->addWidget(m_capture);
    layout->addWidget(new Divider(dependencies.themes, this));
    layout->addWidget(m_footer);
    m_briefing->hide();
    m_ring->raise();
    connect(&m_themes, &ThemeSource::changed, this, &MenuBarView::applyTheme);
    applyTheme();
}

void MenuBarView::applyTheme() {
    m_scroller->setContentWidth(m_themes.theme().pixels(PanelMetrics::width));
}

void MenuBarView::render(const PanelValues& values) {
    const QString age =
        values.lastUpdated ? Formatters::relative(*values.lastUpdated, values.now) : QString();
    m_header->setContent(headerRow(age));
    setSpokenName(*m_header, age.isEmpty() ? u"Today"_s : u"Today, updated "_s + age);

    const bool hasBriefing = values.lastGood.has_value();
    if (hasBriefing)
        m_briefing->render(values);
    else
        m_placeholder->render(values.state, values.isConfigured);
    m_briefing->setVisible(hasBriefing);
    m_placeholder->setVisible(!hasBriefing);

    m_capture->setPending(values.pending.contains(ActionKeys::capture));
    m_footer->setDashboardAvailable(values.hasDashboard);
}

QSize MenuBarView::sizeHint() const {
    return {m_themes.theme().pixels(PanelMetrics::width), layout()->sizeHint().height()};
}

void MenuBarView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_scroller->setContentWidth(width());
}

void MenuBarView::scrollToTop() {
    m_scroller->verticalScrollBar()->setValue(0);
}

bool MenuBarView::focusNextPrevChild(bool next) {
    const QWidgetList leaves = leavesInReadingOrder(*this);
    const qsizetype current = leaves.indexOf(window()->focusWidget());
    const int step = next ? 1 : -1;
    const qsizetype outside = next ? -1 : leaves.size();
    QWidget* stop = findStop(leaves, current < 0 ? outside : current, step, isTabStop);
    if (!stop)
        stop = findStop(leaves, outside, step, isTabStop);
    if (!stop)
        return false;
    if (current >= 0 && !canTakeFocus(*leaves.at(current)))
        stop->setFocus(Qt::OtherFocusReason); // what had the keyboard went away by itself
    else
        takeFocus(*stop, next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void MenuBarView::takeFocus(QWidget& stop, Qt::FocusReason reason) {
    window()->setAttribute(Qt::WA_KeyboardFocusChange);
    stop.setFocus(reason);
    m_ring->follow(); // also where the keyboard was there already, unmarked
}

void MenuBarView::keyPressEvent(QKeyEvent* event) {
    const QWidgetList leaves = leavesInReadingOrder(*this);
    const qsizetype current = leaves.indexOf(window()->focusWidget());
    const qsizetype beyond = leaves.size();
    QWidget* stop = nullptr;
    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Right:
        stop = findStop(leaves, current, 1, canTakeFocus);
        break;
    case Qt::Key_Up:
    case Qt::Key_Left:
        stop = findStop(leaves, current < 0 ? beyond : current, -1, canTakeFocus);
        break;
    case Qt::Key_Home:
        stop = findStop(leaves, -1, 1, canTakeFocus);
        break;
    case Qt::Key_End:
        stop = findStop(leaves, beyond, -1, canTakeFocus);
        break;
    case Qt::Key_PageUp:
        m_scroller->scrollByPage(-1);
        return;
    case Qt::Key_PageDown:
        m_scroller->scrollByPage(1);
        return;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    if (stop)
        takeFocus(*stop, Qt::OtherFocusReason);
}

void MenuBarView::tick(Instant now) {
    m_briefing->tick(now);
}

} // namespace lumora
