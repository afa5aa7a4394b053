#include "ui/access/FocusRing.h"

#include "ui/theme/PanelMetrics.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace lumora {

namespace {

// In points of the design.
constexpr double stroke = 2;
constexpr QMargins reach{4, 3, 4, 3}; ///< beyond the content of what is marked

} // namespace

FocusRing::FocusRing(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(&m_themes, &ThemeSource::changed, this, [this] {
        place();
        update();
    });
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
    setGeometry(QRect(corner, content.size()).marginsAdded(m_themes.theme().pixels(reach)));
    // What is scrolled away is not marked on top of what is in its place.
    const QRegion seen = QRegion(rect()) & inSight().translated(-pos());
    setMask(seen.isEmpty() ? QRegion(-1, -1, 1, 1) : seen);
}

QRect FocusRing::inSight() const {
    QRect sight = parentWidget()->rect();
    for (const QWidget* part = m_marked->parentWidget(); part && part != parentWidget();
         part = part->parentWidget()) {
        const auto* const scroller = qobject_cast<const QAbstractScrollArea*>(part);
        if (scroller)
            sight &= QRect(scroller->mapTo(parentWidget(), QPoint()), scroller->size());
    }
    return sight;
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& theme = m_themes.theme();
    const double thickness = theme.exact(stroke);
    painter.setPen(QPen(theme.color(ColorRole::Accent), thickness));
    const double inset = thickness / 2;
    const double radius = theme.exact(PanelMetrics::cornerRadius);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

} // namespace lumora
