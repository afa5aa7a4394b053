#include "ui/settings/FormCard.h"

#include "ui/settings/FormPainting.h"

#include <QPainter>
#include <QVBoxLayout>

namespace lumora {

namespace {

constexpr double cornerRadius = 11;
constexpr QMargins padding(14, 8, 14, 8);

/// From a row to the line below it, and from there to the next row.
constexpr int rowGap = 8;

} // namespace

FormCard::FormCard(const ThemeSource& themes)
    : m_themes(themes)
    , m_rows(new QVBoxLayout(this)) {
    m_rows->setContentsMargins(padding);
    m_rows->setSpacing(2 * rowGap + 1);
    connect(&m_themes, &ThemeSource::changed, this, qOverload<>(&QWidget::update));
}

void FormCard::addRow(QLayout* row) {
    m_rows->addLayout(row);
}

void FormCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    Form::paintGround(painter, rect(), cornerRadius, Form::cardColor(theme));
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int index = 1; index < m_rows->count(); ++index) {
        const int top = m_rows->itemAt(index)->geometry().top() - rowGap - 1;
        const QRect line(padding.left(), top, width() - padding.left(), 1);
        painter.fillRect(line, theme.color(ColorRole::Divider));
    }
}

} // namespace lumora
