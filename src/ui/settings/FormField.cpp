#include "ui/settings/FormField.h"

#include "ui/settings/FormPainting.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>

namespace lumora {

namespace {

// The toolkit leaves two points beside the text by itself.
constexpr int textMargin = Form::controlPadding - 2;

} // namespace

FormField::FormField(const ThemeSource& themes)
    : m_themes(themes) {
    setFrame(false);
    setTextMargins(textMargin, 0, textMargin, 0);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, &FormField::applyTheme);
    applyTheme();
}

void FormField::applyTheme() {
    const Theme& theme = m_themes.theme();
    setFont(theme.font(TextRole::Body));
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, theme.color(ColorRole::Primary));
    colors.setColor(QPalette::PlaceholderText, theme.color(ColorRole::Secondary));
    colors.setColor(QPalette::Highlight, theme.color(ColorRole::Accent));
    colors.setColor(QPalette::HighlightedText, theme.color(ColorRole::Background));
    setPalette(colors);
}

QSize FormField::sizeHint() const {
    return minimumSizeHint();
}

QSize FormField::minimumSizeHint() const {
    return {
        4 * Form::controlHeight,
        std::max(Form::controlHeight, QFontMetrics(font()).height() + Form::controlPadding)};
}

void FormField::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* const menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setPalette(Form::popupPalette(m_themes.theme()));
    menu->popup(event->globalPos());
}

void FormField::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        const Theme& theme = m_themes.theme();
        Form::paintGround(
            painter, rect(), Form::controlRadius, Form::controlColor(theme, Form::Emphasis::None));
        if (hasFocus()) {
            Form::paintFocusRing(painter, rect(), Form::controlRadius, theme);
        } else {
            painter.setPen(theme.color(ColorRole::Quaternary));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(
                QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Form::controlRadius,
                Form::controlRadius);
        }
    }
    QLineEdit::paintEvent(event);
}

} // namespace lumora
