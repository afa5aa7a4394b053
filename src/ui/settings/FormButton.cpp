#include "ui/settings/FormButton.h"

#include "ui/rows/RowPainter.h"
#include "ui/settings/FormPainting.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace lumora {

namespace {

// In points.
constexpr int spinnerEdge = 12;
constexpr int spinnerGap = 5;

} // namespace

FormButton::FormButton(const ThemeSource& themes, const QString& title, const QString& busyTitle)
    : m_themes(themes)
    , m_title(title)
    , m_busyTitle(busyTitle)
    , m_spinner(themes, this) {
    setText(m_title);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_spinner, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&m_themes, &ThemeSource::changed, this, &FormButton::applyTheme);
    applyTheme();
}

void FormButton::applyTheme() {
    setFont(m_themes.theme().font(TextRole::Callout, QFont::Medium));
    updateGeometry();
    update();
}

void FormButton::setBusy(bool busy) {
    m_busy = busy;
    m_spinner.setRunning(busy);
    setEnabled(!busy);
    setText(busy ? m_busyTitle : m_title);
}

QSize FormButton::sizeHint() const {
    const Theme& theme = m_themes.theme();
    int width = Form::textWidth(font(), m_title);
    if (!m_busyTitle.isEmpty()) {
        const int beside = theme.pixels(spinnerEdge + spinnerGap);
        width = std::max(width, Form::textWidth(font(), m_busyTitle) + beside);
    }
    return {width + 2 * theme.pixels(Form::controlPadding), Form::controlHeight(font(), theme)};
}

QSize FormButton::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

bool FormButton::event(QEvent* event) {
    const int room = width() - 2 * m_themes.theme().pixels(Form::controlPadding);
    return Form::answersWithWhole(*this, *event, text(), room) || QAbstractButton::event(event);
}

void FormButton::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

/// Draws the spinner so that it and the text are in the middle of `room` together, and returns
/// what it leaves for the text.
QRect FormButton::paintSpinnerBeside(QPainter& painter, const QRect& room) const {
    const Theme& theme = m_themes.theme();
    const int edge = theme.pixels(spinnerEdge);
    const int gap = theme.pixels(spinnerGap);
    const int both = std::min(room.width(), edge + gap + Form::textWidth(font(), text()));
    const QRect group(room.left() + (room.width() - both) / 2, room.top(), both, room.height());
    const QRect square(group.left(), group.center().y() - edge / 2, edge, edge);
    paintSpinner(
        painter, QStyle::visualRect(layoutDirection(), rect(), square),
        theme.color(ColorRole::Secondary), m_spinner.rotation());
    return QStyle::visualRect(layoutDirection(), rect(), group.adjusted(edge + gap, 0, 0, 0));
}

void FormButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    Form::paintControl(painter, *this, Form::emphasisOf(*this, isDown()), theme);
    const int padding = theme.pixels(Form::controlPadding);
    QRect room = rect().adjusted(padding, 0, -padding, 0);
    if (m_busy)
        room = paintSpinnerBeside(painter, room);
    const ColorRole waiting = m_busy ? ColorRole::Secondary : ColorRole::Tertiary;
    painter.setFont(font());
    painter.setPen(theme.color(isEnabled() ? ColorRole::Primary : waiting));
    Form::paintLabel(painter, room, Qt::AlignCenter, text(), *this);
}

} // namespace lumora
