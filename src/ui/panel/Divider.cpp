#include "ui/panel/Divider.h"

#include <QPainter>

namespace lumora {

Divider::Divider(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes) {
    setFixedHeight(1);
    connect(&m_themes, &ThemeSource::changed, this, [this] { update(); });
}

void Divider::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), m_themes.theme().color(ColorRole::Divider));
}

} // namespace lumora
