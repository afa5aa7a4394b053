#include "ui/settings/FormCard.h"

#include "ui/settings/FormPainting.h"
#include "ui/theme/Spacing.h"

#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

namespace lumora {

namespace {

// In points.
constexpr double cardRadius = 11;

/// From a row to the next; the line is in the middle.
constexpr int rowGap = 17;

} // namespace

FormCard::FormCard(const ThemeSource& themes)
    : m_themes(themes)
    , m_rows(new QVBoxLayout(this)) {
    keepSpaced(*m_rows, themes, padding, rowGap);
    connect(&m_themes, &ThemeSource::changed, this, qOverload<>(&QWidget::update));
}

void FormCard::addRow(QLayout* row) {
    m_rows->addLayout(row);
}

void FormCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    Form::paintGround(painter, rect(), cardRadius, Form::cardColor(theme), theme);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const int indent = theme.pixels(padding.left());
    for (int index = 1; index < m_rows->count(); ++index) {
        const int above = m_rows->itemAt(index - 1)->geometry().bottom() + 1;
        const int middle = (above + m_rows->itemAt(index)->geometry().top()) / 2;
        const QRect line(indent, middle, width() - indent, 1);
        painter.fillRect(
            QStyle::visualRect(layoutDirection(), rect(), line), theme.color(ColorRole::Divider));
    }
}

} // namespace lumora
