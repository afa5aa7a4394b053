#include "ui/settings/SettingsWindow.h"

#include "ui/rows/ContentScroller.h"
#include "ui/settings/FormPainting.h"
#include "ui/settings/SettingsModel.h"
#include "ui/settings/SettingsView.h"
#include "ui/window/FrontWindow.h"

#include <QEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// What window managers put around a window, until this one's has done so. In points, because their
/// title bars have a text as well.
constexpr QMargins usualFrame(2, 36, 2, 4);

} // namespace

QSize sizeOnScreen(const QSize& wanted, const QSize& available, const QMargins& frame) {
    return wanted.boundedTo(available.shrunkBy(frame));
}

SettingsWindow::SettingsWindow(SettingsModel& model, const ThemeSource& themes)
    : m_model(model)
    , m_themes(themes)
    , m_view(new SettingsView(model, themes))
    , m_scroller(new ContentScroller(themes, m_view, this)) {
    setWindowTitle(u"Settings"_s);
    // Absent until Lumora is installed; the desktop has one of its own for such windows.
    setWindowIcon(QIcon::fromTheme(u"com.lumora.app"_s));
    connect(m_scroller, &ContentScroller::contentChanged, this, &SettingsWindow::refit);
    connect(&m_themes, &ThemeSource::changed, this, [this] {
        refit();
        update();
    });
}

void SettingsWindow::open(const QByteArray& activationToken) {
    if (!isVisible()) {
        m_model.appear();
        m_view->render();
        refit();
        // Not the field that had it last: nobody wants to change a setting unasked.
        setFocus(Qt::ActiveWindowFocusReason);
        m_view->focusFirstGap();
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    bringToFront(*this, activationToken);
}

QMargins SettingsWindow::frame() const {
    const QMargins known = isVisible() ? windowHandle()->frameMargins() : QMargins();
    return known.isNull() ? m_themes.theme().pixels(usualFrame) : known;
}

void SettingsWindow::refit() {
    const QSize available = screen()->availableGeometry().size();
    const int wanted = m_themes.theme().pixels(contentWidth);
    const int width = sizeOnScreen({wanted, 0}, available, frame()).width();
    setFixedSize(sizeOnScreen({width, m_scroller->contentHeight(width)}, available, frame()));
    m_scroller->setGeometry(rect());
}

bool SettingsWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        m_model.lookAgain();
    else if (event->type() == QEvent::WindowDeactivate)
        Form::setShowsMnemonics(*this, false);
    return QWidget::event(event);
}

void SettingsWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    // Fields keep some keys to themselves, and the window would never hear of Alt let go.
    windowHandle()->installEventFilter(this);
    // A fit that was made before the window knew its screen may be one for another.
    refit();
}

void SettingsWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return; // only minimized
    m_model.disappear();
    m_view->render();
}

void SettingsWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close))
        close();
    else
        QWidget::keyPressEvent(event);
}

bool SettingsWindow::eventFilter(QObject* watched, QEvent* event) {
    const bool pressed = event->type() == QEvent::KeyPress;
    if (watched == windowHandle() && (pressed || event->type() == QEvent::KeyRelease)) {
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
            Form::setShowsMnemonics(*this, pressed);
    }
    return QWidget::eventFilter(watched, event);
}

void SettingsWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    // That is how a window hears of having got its frame.
    if (isVisible())
        refit();
}

void SettingsWindow::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Form::windowColor(m_themes.theme()));
}

} // namespace lumora
