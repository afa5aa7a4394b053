#include "ui/settings/FormSwitch.h"

#include "ui/settings/FormPainting.h"

#include <QKeyEvent>
#include <QPainter>

namespace lumora {

namespace {

constexpr QSizeF track(36, 20);
constexpr double knobInset = 2;
constexpr double ringGap = 3;

} // namespace

FormSwitch::FormSwitch(const ThemeSource& themes, const QString& text)
    : QCheckBox(text)
    , m_themes(themes) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, &FormSwitch::applyTheme);
    applyTheme();
}

void FormSwitch::applyTheme() {
    setFont(m_themes.theme().font(TextRole::Body));
    updateGeometry();
    update();
}

QSize FormSwitch::sizeHint() const {
    const QFontMetrics metrics(font());
    const int width = metrics.size(Qt::TextSingleLine | Qt::TextHideMnemonic, text()).width();
    return {
        width + Form::controlPadding + int(track.width()),
        std::max(Form::controlHeight, metrics.height())};
}

QSize FormSwitch::minimumSizeHint() const {
    return sizeHint();
}

bool FormSwitch::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void FormSwitch::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else
        QCheckBox::keyPressEvent(event);
}

void FormSwitch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    painter.setFont(font());
    painter.setPen(theme.color(ColorRole::Primary));
    Form::paintLabel(painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, text(), *this);

    const QRectF place(
        width() - track.width(), (height() - track.height()) / 2, track.width(), track.height());
    const double radius = track.height() / 2;
    // The ground's colour around the track sets the focus ring off.
    if (hasFocus()) {
        const QRectF ring = place.adjusted(-ringGap, -ringGap, ringGap, ringGap);
        Form::paintFocusRing(painter, ring & rect(), radius + ringGap, theme);
    }
    Form::paintGround(
        painter, place, radius, theme.color(isChecked() ? ColorRole::Accent : ColorRole::Tertiary));
    const double edge = track.height() - 2 * knobInset;
    const double left = isChecked() ? place.right() - knobInset - edge : place.left() + knobInset;
    Form::paintGround(painter, {left, place.top() + knobInset, edge, edge}, edge / 2, Qt::white);
}

} // namespace lumora
