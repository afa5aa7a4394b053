#include "ui/settings/FormSwitch.h"

#include "ui/settings/FormPainting.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace lumora {

namespace {

// In points.
constexpr int trackWidth = 36;
constexpr int trackHeight = 20;
constexpr double knobInset = 2;
constexpr double ringGap = 3;
constexpr int lineGap = 5; ///< above and below a name of several lines

/// What lies on the track under the pointer, and while it is held down.
QColor shade(Form::Emphasis emphasis, const Theme& theme) {
    switch (emphasis) {
    case Form::Emphasis::None:
        return Qt::transparent;
    case Form::Emphasis::Hover:
        return theme.color(ColorRole::Quaternary);
    case Form::Emphasis::Pressed:
        return laidOver(theme.color(ColorRole::Quaternary), theme.color(ColorRole::Tertiary));
    }
    Q_UNREACHABLE();
}

constexpr int wrapping = Qt::TextWordWrap | Qt::TextHideMnemonic;

} // namespace

FormSwitch::FormSwitch(const ThemeSource& themes, const QString& text)
    : QCheckBox(text)
    , m_themes(themes) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&m_themes, &ThemeSource::changed, this, &FormSwitch::applyTheme);
    applyTheme();
}

void FormSwitch::applyTheme() {
    setFont(m_themes.theme().font(TextRole::Body));
    updateGeometry();
    update();
}

int FormSwitch::besideText() const {
    return m_themes.theme().pixels(Form::controlPadding + trackWidth);
}

int FormSwitch::heightForWidth(int width) const {
    const Theme& theme = m_themes.theme();
    const QRect room(0, 0, std::max(1, width - besideText()), QWIDGETSIZE_MAX);
    const int height = QFontMetrics(font()).boundingRect(room, wrapping, text()).height();
    return std::max(Form::controlHeight(font(), theme), height + 2 * theme.pixels(lineGap));
}

QSize FormSwitch::sizeHint() const {
    return {
        Form::textWidth(font(), text()) + besideText(),
        Form::controlHeight(font(), m_themes.theme())};
}

QSize FormSwitch::minimumSizeHint() const {
    return {0, sizeHint().height()};
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
    painter.setFont(font());
    painter.setPen(m_themes.theme().color(ColorRole::Primary));
    const QRect room =
        QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(0, 0, -besideText(), 0));
    Form::paintLabel(painter, room, Qt::AlignLeft | Qt::AlignVCenter, text(), *this, true);
    paintTrack(painter);
}

void FormSwitch::paintTrack(QPainter& painter) const {
    const Theme& theme = m_themes.theme();
    const bool fromRight = layoutDirection() == Qt::RightToLeft;
    const double across = theme.exact(trackWidth);
    const double high = theme.exact(trackHeight);
    const QRectF place(fromRight ? 0 : width() - across, (height() - high) / 2, across, high);
    constexpr double radius = trackHeight / 2.0;
    // The ground's colour around the track sets the focus ring off.
    if (hasFocus()) {
        const double gap = theme.exact(ringGap);
        const QRectF ring = place.adjusted(-gap, -gap, gap, gap);
        Form::paintFocusRing(painter, ring & rect(), radius + ringGap, theme);
    }
    const ColorRole ground = isChecked() ? ColorRole::Accent : ColorRole::Tertiary;
    Form::paintGround(painter, place, radius, theme.color(ground), theme);
    const auto emphasis = Form::emphasisOf(*this, isDown());
    Form::paintGround(painter, place, radius, shade(emphasis, theme), theme);
    const double inset = theme.exact(knobInset);
    const double edge = high - 2 * inset;
    const bool isRight = isChecked() != fromRight;
    const double left = isRight ? place.right() - inset - edge : place.left() + inset;
    Form::paintGround(painter, {left, place.top() + inset, edge, edge}, radius, Qt::white, theme);
}

} // namespace lumora
