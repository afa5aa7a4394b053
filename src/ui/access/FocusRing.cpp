#include "ui/access/FocusRing.h"

#include "ui/theme/PanelMetrics.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace lumora {

namespace {

constexpr double stroke = 2;
constexpr QMargins reach{4, 3, 4, 3}; ///< beyond the content of what is marked

} // namespace

FocusRing::FocusRing(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(&m_themes, &ThemeSource::changed, this, qOverload<>(&QWidget::update));
    connect(qApp, &QApplication::focusChanged, this, &FocusRing::follow);
    hide();
}

void FocusRing::follow() {
    QWidget* focused = QApplication::focusWidget();
    const bool isHere = focused && parentWidget()->isAncestorOf(focused);
    watch(isHere && window()->testAttribute(Qt::WA_KeyboardFocusChange) ? focused : nullptr);
}

void FocusRing::watch(QWidget* marked) {
    for (const auto& watched : std::as_const(m_watched)) {
        if (watched)
            watched->removeEventFilter(this);
    }
    m_watched.clear();
    m_marked = marked;
    for (QWidget* part = marked; part && part != parentWidget(); part = part->parentWidget()) {
        part->installEventFilter(this);
        m_watched += part;
    }
    setVisible(marked != nullptr);
    place();
}

void FocusRing::place() {
    if (!m_marked)
        return;
    const QRect content = m_marked->contentsRect();
    const QPoint corner = m_marked->mapTo(parentWidget(), content.topLeft());
    setGeometry(QRect(corner, content.size()).marginsAdded(reach));
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_themes.theme().color(ColorRole::Accent), stroke));
    const double inset = stroke / 2;
    painter.drawRoundedRect(
        QRectF(rect()).adjusted(inset, inset, -inset, -inset), PanelMetrics::cornerRadius,
        PanelMetrics::cornerRadius);
}

} // namespace lumora
