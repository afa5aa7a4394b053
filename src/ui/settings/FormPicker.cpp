#include "ui/settings/FormPicker.h"

#include "ui/rows/RowPainter.h"
#include "ui/settings/FormPainting.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr double chevronEdge = 11;
constexpr double chevronGap = 8;

} // namespace

FormPicker::FormPicker(const ThemeSource& themes, const QStringList& choices)
    : m_themes(themes) {
    addItems(choices);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, &FormPicker::applyTheme);
    applyTheme();
}

void FormPicker::applyTheme() {
    const Theme& theme = m_themes.theme();
    setFont(theme.font(TextRole::Callout));
    // The list is a window of its own and takes nothing from the picker by itself.
    const QPalette colors = Form::popupPalette(theme);
    view()->setPalette(colors);
    view()->window()->setPalette(colors);
    updateGeometry();
    update();
}

void FormPicker::setChosen(int index, const QString& otherwise) {
    setPlaceholderText(otherwise);
    if (currentIndex() != index)
        setCurrentIndex(index);
    // What is no choice has no place in the list, so screen readers would hear of nothing.
    const QString description = index < 0 ? otherwise : QString();
    if (accessibleDescription() != description)
        setAccessibleDescription(description);
    updateGeometry();
    update();
}

QString FormPicker::shownText() const {
    return currentIndex() < 0 ? placeholderText() : currentText();
}

QSize FormPicker::sizeHint() const {
    const QFontMetrics metrics(font());
    int widest = metrics.horizontalAdvance(shownText());
    for (int index = 0; index < count(); ++index)
        widest = std::max(widest, metrics.horizontalAdvance(itemText(index)));
    return {
        widest + 2 * Form::controlPadding + int(chevronGap + chevronEdge),
        std::max(Form::controlHeight, metrics.height() + Form::controlPadding)};
}

QSize FormPicker::minimumSizeHint() const {
    return sizeHint();
}

void FormPicker::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn)
        showPopup();
    else
        QComboBox::keyPressEvent(event);
}

void FormPicker::wheelEvent(QWheelEvent* event) {
    // Scrolling past it must not choose anything.
    event->ignore();
}

void FormPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    const auto emphasis = underMouse() ? Form::Emphasis::Hover : Form::Emphasis::None;
    Form::paintGround(painter, rect(), Form::controlRadius, Form::controlColor(theme, emphasis));
    if (hasFocus())
        Form::paintFocusRing(painter, rect(), Form::controlRadius, theme);

    const QRectF room = QRectF(rect()).adjusted(
        Form::controlPadding, 0, -(Form::controlPadding + chevronEdge + chevronGap), 0);
    painter.setFont(font());
    painter.setPen(theme.color(ColorRole::Primary));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shownText());
    const QRectF square(
        room.right() + chevronGap, (height() - chevronEdge) / 2, chevronEdge, chevronEdge);
    paintSymbol(painter, square, u"chevron.down"_s, {.tint = theme.color(ColorRole::Secondary)});
}

} // namespace lumora
