#include "settings/SettingsWindow.h"

#include "settings/FormPainting.h"
#include "settings/SettingsModel.h"
#include "settings/SettingsView.h"
#include "views/FrontWindow.h"
#include "views/PanelScroller.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

SettingsWindow::SettingsWindow(SettingsModel& model, const ThemeSource& themes)
    : m_model(model)
    , m_themes(themes)
    , m_view(new SettingsView(model, themes))
    , m_scroller(new PanelScroller(themes, m_view, this)) {
    setWindowTitle(u"Settings"_s);
    connect(m_scroller, &PanelScroller::contentChanged, this, &SettingsWindow::refit);
    connect(&m_themes, &ThemeSource::changed, this, qOverload<>(&QWidget::update));
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

void SettingsWindow::refit() {
    const int wanted = m_scroller->contentHeight(contentWidth);
    setFixedSize(contentWidth, std::min(wanted, screen()->availableGeometry().height()));
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
    // A fit that was made before the window knew its screen may be one for another.
    if (!event->spontaneous())
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
    else if (event->key() == Qt::Key_Alt)
        Form::setShowsMnemonics(*this, true);
    else
        QWidget::keyPressEvent(event);
}

void SettingsWindow::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Alt)
        Form::setShowsMnemonics(*this, false);
    QWidget::keyReleaseEvent(event);
}

void SettingsWindow::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Form::windowColor(m_themes.theme()));
}

} // namespace lumora
