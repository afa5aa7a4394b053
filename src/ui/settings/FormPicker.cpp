#include "ui/settings/FormPicker.h"

#include "ui/rows/RowPainter.h"
#include "ui/settings/FormPainting.h"
#include "ui/theme/PopupStyle.h"

#include <QActionGroup>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyle>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// In points.
constexpr int chevronEdge = 11;
constexpr int chevronGap = 8;
constexpr int menuGap = 3; ///< from the picker to its menu

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
    setFont(m_themes.theme().font(TextRole::Callout));
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

int FormPicker::besideText() const {
    return m_themes.theme().pixels(2 * Form::controlPadding + chevronGap + chevronEdge);
}

QSize FormPicker::sizeHint() const {
    int widest = Form::textWidth(font(), shownText());
    for (int index = 0; index < count(); ++index)
        widest = std::max(widest, Form::textWidth(font(), itemText(index)));
    return {widest + besideText(), Form::controlHeight(font(), m_themes.theme())};
}

QSize FormPicker::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void FormPicker::showPopup() {
    if (m_menu)
        return;
    m_menu = new QMenu(this);
    auto* const choices = new QActionGroup(m_menu);
    for (int index = 0; index < count(); ++index) {
        QAction* const choice = choices->addAction(itemText(index));
        choice->setCheckable(true);
        choice->setChecked(index == currentIndex());
        connect(choice, &QAction::triggered, this, [this, index] { setCurrentIndex(index); });
    }
    m_menu->addActions(choices->actions());
    m_menu->setMinimumWidth(width());
    dressMenu(*m_menu, m_themes);
    connect(m_menu, &QObject::destroyed, this, qOverload<>(&QWidget::update));

    const int left =
        layoutDirection() == Qt::RightToLeft ? width() - m_menu->sizeHint().width() : 0;
    m_menu->popup(mapToGlobal(QPoint(left, height() + m_themes.theme().pixels(menuGap))));
    m_menu->setActiveAction(choices->checkedAction());
    update();
}

void FormPicker::hidePopup() {
    if (m_menu)
        m_menu->close();
}

bool FormPicker::event(QEvent* event) {
    return Form::answersWithWhole(*this, *event, shownText(), width() - besideText()) ||
           QComboBox::event(event);
}

void FormPicker::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        showPopup();
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
    Form::paintControl(painter, *this, Form::emphasisOf(*this, !m_menu.isNull()), theme);

    const int padding = theme.pixels(Form::controlPadding);
    const int edge = theme.pixels(chevronEdge);
    const QRect square(width() - padding - edge, (height() - edge) / 2, edge, edge);
    const QRect room(padding, 0, width() - besideText(), height());
    painter.setFont(font());
    painter.setPen(theme.color(ColorRole::Primary));
    Form::paintLabel(
        painter, QStyle::visualRect(layoutDirection(), rect(), room),
        Qt::AlignLeft | Qt::AlignVCenter, shownText(), *this);
    paintSymbol(
        painter, QStyle::visualRect(layoutDirection(), rect(), square), u"chevron.down"_s,
        {.tint = theme.color(ColorRole::Secondary)});
}

} // namespace lumora
