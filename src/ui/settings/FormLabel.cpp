#include "ui/settings/FormLabel.h"

#include "ui/settings/FormPainting.h"

#include <QPainter>

namespace lumora {

FormLabel::FormLabel(const ThemeSource& themes, const QString& text, Style style)
    : QLabel(text)
    , m_themes(themes)
    , m_style(style) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, &FormLabel::applyTheme);
    applyTheme();
}

void FormLabel::applyTheme() {
    setFont(m_themes.theme().font(m_style.role, m_style.weight));
    updateGeometry();
    update();
}

QSize FormLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    return {
        metrics.size(Qt::TextSingleLine | Qt::TextHideMnemonic, text()).width(), metrics.height()};
}

QSize FormLabel::minimumSizeHint() const {
    return sizeHint();
}

void FormLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(m_themes.theme().color(m_style.color));
    Form::paintLabel(painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, text(), *this);
}

} // namespace lumora
