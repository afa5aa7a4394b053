#include "ui/settings/FormField.h"

#include "ui/rows/WidgetTexts.h"
#include "ui/settings/FormPainting.h"
#include "ui/theme/PopupStyle.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>

namespace lumora {

namespace {

/// What the toolkit leaves beside the text by itself, in pixels.
constexpr int ownMargin = 2;

constexpr int narrowest = 120; ///< points

} // namespace

FormField::FormField(const ThemeSource& themes)
    : m_themes(themes) {
    setFrame(false);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, &FormField::applyTheme);
    applyTheme();
}

void FormField::applyTheme() {
    const Theme& theme = m_themes.theme();
    setFont(theme.font(TextRole::Body));
    const int margin = theme.pixels(Form::controlPadding) - ownMargin;
    setTextMargins(margin, 0, margin, 0);
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, theme.color(ColorRole::Primary));
    colors.setColor(QPalette::PlaceholderText, theme.color(ColorRole::Secondary));
    colors.setColor(QPalette::Highlight, theme.color(ColorRole::Accent));
    colors.setColor(QPalette::HighlightedText, theme.color(ColorRole::OnAccent));
    setPalette(colors);
    updateGeometry();
}

QSize FormField::sizeHint() const {
    return minimumSizeHint();
}

QSize FormField::minimumSizeHint() const {
    const Theme& theme = m_themes.theme();
    return {theme.pixels(narrowest), Form::controlHeight(font(), theme)};
}

bool FormField::event(QEvent* event) {
    // A secret is told to nobody.
    const int room = width() - 2 * m_themes.theme().pixels(Form::controlPadding);
    if (event->type() == QEvent::ToolTip && echoMode() == Normal && !text().isEmpty() &&
        fontMetrics().horizontalAdvance(text()) > room) {
        return showToolTip(*this, static_cast<QHelpEvent*>(event)->globalPos(), {text()});
    }
    return QLineEdit::event(event);
}

void FormField::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* const menu = createStandardContextMenu();
    dressMenu(*menu, m_themes);
    menu->popup(event->globalPos());
}

void FormField::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        const Theme& theme = m_themes.theme();
        Form::paintControl(painter, *this, Form::emphasisOf(*this, false), theme);
    }
    QLineEdit::paintEvent(event);
}

} // namespace lumora
