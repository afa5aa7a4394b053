#include "ui/settings/FormButton.h"

#include "ui/settings/FormPainting.h"

#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace lumora {

FormButton::FormButton(const ThemeSource& themes, QStringList titles)
    : m_themes(themes)
    , m_titles(std::move(titles)) {
    setText(m_titles.constFirst());
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, &FormButton::applyTheme);
    applyTheme();
}

void FormButton::applyTheme() {
    setFont(m_themes.theme().font(TextRole::Callout, QFont::Medium));
    updateGeometry();
    update();
}

QSize FormButton::sizeHint() const {
    const QFontMetrics metrics(font());
    int widest = 0;
    for (const QString& title : m_titles)
        widest = std::max(
            widest, metrics.size(Qt::TextSingleLine | Qt::TextHideMnemonic, title).width());
    return {
        widest + 2 * Form::controlPadding,
        std::max(Form::controlHeight, metrics.height() + Form::controlPadding)};
}

QSize FormButton::minimumSizeHint() const {
    return sizeHint();
}

void FormButton::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void FormButton::paintEvent(QPaintEvent*) {
    using Form::Emphasis;
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    const Emphasis hovered = underMouse() && isEnabled() ? Emphasis::Hover : Emphasis::None;
    const Emphasis emphasis = isDown() ? Emphasis::Pressed : hovered;
    Form::paintGround(painter, rect(), Form::controlRadius, Form::controlColor(theme, emphasis));
    if (hasFocus())
        Form::paintFocusRing(painter, rect(), Form::controlRadius, theme);
    painter.setFont(font());
    painter.setPen(theme.color(isEnabled() ? ColorRole::Primary : ColorRole::Tertiary));
    Form::paintLabel(painter, rect(), Qt::AlignCenter, text(), *this);
}

} // namespace lumora
