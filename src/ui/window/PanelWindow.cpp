#include "ui/window/PanelWindow.h"

#include "ui/theme/PanelMetrics.h"
#include "ui/window/FrontWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

/// Between the panel and the edges of the work area, where it floats, in pixels.
constexpr int floatingGap = 4;

/// A press on the status item may take the focus away first; its report arrives within this time.
constexpr auto pressDelay = 300ms;

/// Window managers have placed a new window for good by then.
constexpr auto settlingTime = 500ms;

std::chrono::milliseconds doubleClick() {
    return std::chrono::milliseconds(QApplication::doubleClickInterval());
}

/// Layouts learn of changes through events, one level of nesting after the other; this lets all of
/// them learn now.
void settleLayouts() {
    constexpr int deepestNesting = 12;
    for (int level = 0; level < deepestNesting; ++level)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

} // namespace

PanelWindow::PanelWindow(QWidget* content, const Dependencies& dependencies)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint)
    , m_with(dependencies)
    , m_content(content) {
    m_content->setParent(this);
    m_content->installEventFilter(this);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(u"Lumora"_s);
    setWindowFlag(Qt::BypassWindowManagerHint, m_with.layer != nullptr);

    connect(&m_with.compositing, &Compositing::changed, this, &PanelWindow::refit);
    connect(&m_with.themes, &ThemeSource::changed, this, [this] {
        refit();
        update();
    });
    connect(qApp, &QGuiApplication::screenAdded, this, &PanelWindow::refit);
    connect(qApp, &QGuiApplication::screenRemoved, this, &PanelWindow::refit);
}

PanelWindow::~PanelWindow() {
    if (m_with.layer)
        m_with.layer->close();
}

void PanelWindow::toggle(const AnchorEvidence& evidence, const QByteArray& activationToken) {
    if (!isVisible()) {
        if (!isRecent(m_deactivated, pressDelay))
            showAt(evidence, activationToken);
    } else if (!evidence.activation || !isRecent(m_opened, doubleClick())) {
        hide();
    }
}

bool PanelWindow::isRecent(std::optional<Instant> instant, std::chrono::milliseconds span) const {
    const Instant now = m_with.clock.now();
    return instant && now >= *instant && now - *instant < span;
}

void PanelWindow::showAt(const AnchorEvidence& evidence, const QByteArray& activationToken) {
    m_deactivated.reset();
    if (m_with.layer && !isVisible())
        openInLayer(evidence);
    else
        present(evidence, activationToken);
}

// What is known of the place comes from the event loop; the window is laid out by that.
void PanelWindow::openInLayer(const AnchorEvidence& evidence) {
    winId(); // there is a window for the layer from now on
    m_with.layer->open(
        *windowHandle(), {.pointer = evidence.pressed, .near = m_lastGoodAnchor},
        {
            .opened =
                [this, evidence](const PanelLayer::Room& room) {
                    m_room = {.geometry = room.screen, .available = room.available};
                    AnchorEvidence all = evidence;
                    all.pointer = room.pointer;
                    present(all, {}); // what comes into the layer has the keyboard anyway
                },
            .pressedOutside =
                [this] {
                    // The second press of a double click does not get through to the status item.
                    if (isVisible() && !isRecent(m_opened, doubleClick()))
                        hide();
                },
            .closed = [this] { hide(); },
        });
}

QList<PlacementScreen> PanelWindow::screens() const {
    return m_with.layer ? QList<PlacementScreen>{m_room} : m_with.screens();
}

void PanelWindow::present(const AnchorEvidence& evidence, const QByteArray& activationToken) {
    const bool opening = !isVisible();
    if (opening)
        Q_EMIT aboutToShow();

    AnchorEvidence all = evidence;
    if (m_lastGoodAnchor)
        all.lastGood = m_lastGoodAnchor;
    const auto anchor = chooseAnchor(all, screens());
    if (anchor && anchor->known)
        m_lastGoodAnchor = anchor->point;

    settleLayouts();
    m_asked = {};
    arrange();
    if (opening) {
        m_opened = m_with.clock.now();
        m_insisted = false;
        winId(); // there is a window to be prepared from now on
        m_with.prepare(*this);
        followScreens();
        // Not the field that had it last: nobody wants to type into it unasked. Nor is anything
        // marked before the user has touched a key.
        setAttribute(Qt::WA_KeyboardFocusChange, false);
        m_content->setFocus(Qt::ActiveWindowFocusReason);
    }
    bringToFront(*this, activationToken);
    // Some layouts only settle once they are visible; nothing is painted before that.
    settleLayouts();
}

void PanelWindow::rehearse() {
    if (isVisible())
        return;
    settleLayouts();
    arrange();
    grab(); // the picture itself is of no use
}

void PanelWindow::followScreens() {
    for (const QScreen* screen : QGuiApplication::screens()) {
        for (const auto changed : {&QScreen::geometryChanged, &QScreen::availableGeometryChanged})
            connect(screen, changed, this, &PanelWindow::refit, Qt::UniqueConnection);
    }
}

QRect PanelWindow::panelGeometry() const {
    return m_panel.translated(mapToGlobal(QPoint()));
}

void PanelWindow::setVisible(bool visible) {
    m_open = visible;
    if (!visible && m_with.layer)
        m_with.layer->close();
    QWidget::setVisible(visible);
}

void PanelWindow::refit() {
    if (isVisible())
        arrange();
}

void PanelWindow::arrange() {
    if (m_with.placesWindows)
        arrangeAtBar();
    else
        arrangeAsWindow();
}

QSize PanelWindow::wantedSize(int maximumWidth) const {
    const int borders = 2 * borderWidth();
    const int wanted = m_with.themes.theme().pixels(PanelMetrics::width);
    const int width = std::min(wanted, maximumWidth - borders);
    m_content->ensurePolished();
    // How high the content is depends on its width.
    m_content->resize(width, m_content->height());
    const int height = std::clamp(
        m_content->sizeHint().height(), m_content->minimumHeight(), m_content->maximumHeight());
    return {width + borders, height + borders};
}

void PanelWindow::arrangeAtBar() {
    const auto all = screens();
    const auto anchor = chooseAnchor({.lastGood = m_lastGoodAnchor}, all);
    if (!anchor)
        return;
    const PlacementScreen& screen = all.at(anchor->screen);
    const int gap = hasShadow() ? floatingGap : 0;
    const QSize wanted = wantedSize(screen.available.width() - 2 * gap);
    const PanelPlacement placement = placePanel(anchor->point, screen, wanted, gap);

    // Beyond the work area nobody would see the shadow, and window managers would push it back.
    const QMargins margins = hasShadow() ? PanelShadow::margins() : QMargins();
    const QRect window = placement.reach.marginsAdded(margins) & screen.available;
    if (std::exchange(m_asked, window) != window) {
        setGeometry(window);
        if (m_with.layer)
            m_with.layer->place(window);
    }
    const QRect panel = placement.panel.translated(-window.topLeft());
    setPanel(panel);
    if (!m_with.layer) // where what is cut away would let presses through to what is behind
        setMask(panel.marginsAdded(margins) & QRect(QPoint(), window.size()));
}

void PanelWindow::arrangeAsWindow() {
    const QRect room = screen()->availableGeometry();
    const QSize wanted = wantedSize(room.width());
    setFixedSize(wanted.width(), std::min(wanted.height(), room.height()));
    setPanel(rect());
}

void PanelWindow::setPanel(const QRect& panel) {
    m_panel = panel;
    const int border = borderWidth();
    m_content->setGeometry(panel.adjusted(border, border, -border, -border));
    update();
}

bool PanelWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_content && event->type() == QEvent::LayoutRequest)
        refit(); // the content asks for another size
    return QWidget::eventFilter(watched, event);
}

bool PanelWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate)
        onDeactivated();
    else if (event->type() == QEvent::UpdateRequest)
        settleLayouts(); // nothing half laid out is ever painted
    return QWidget::event(event);
}

void PanelWindow::onDeactivated() {
    if (!m_open || hasActivePart(*this))
        return;
    m_deactivated = m_with.clock.now();
    hide();
}

void PanelWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        Q_EMIT hidden();
}

void PanelWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

// A window manager that adds its frame and takes it off again leaves the window beside its place.
// It is asked once more; what it says then holds, and so does what the user does later.
void PanelWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (m_insisted || !m_open || !m_with.placesWindows || !isRecent(m_opened, settlingTime) ||
        event->pos() == m_asked.topLeft())
        return;
    m_insisted = true;
    const QRect place = m_asked;
    QMetaObject::invokeMethod(this, [this, place] { move(place.topLeft()); }, Qt::QueuedConnection);
}

void PanelWindow::mousePressEvent(QMouseEvent* event) {
    // The shadow belongs to the window, but not to what the user sees as the panel. It may lie over
    // the status item, whose double click ends here then.
    if (!m_panel.contains(event->position().toPoint()) && !isRecent(m_opened, doubleClick()))
        hide();
}

void PanelWindow::paintEvent(QPaintEvent*) {
    using Shape = PanelGround::Shape;
    const Shape round = hasShadow() ? Shape::RoundWithShadow : Shape::Round;
    QPainter painter(this);
    m_ground.paint(painter, m_panel, m_with.themes.theme(), isRounded() ? round : Shape::Square);
}

void PanelWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!m_with.placesWindows)
        setPanel(rect());
}

} // namespace lumora
