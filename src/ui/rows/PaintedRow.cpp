#include "ui/rows/PaintedRow.h"

#include "ui/rows/RowPainter.h"
#include "ui/rows/WidgetTexts.h"

#include <QPainter>

#include <cmath>
#include <utility>

namespace lumora {

PaintedRow::PaintedRow(const ThemeSource& themes, QMargins padding, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes) {
    setContentsMargins(padding);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void PaintedRow::setContent(RowContent content) {
    if (m_content == content)
        return;
    m_content = std::move(content);
    updateGeometry();
    update();
}

void PaintedRow::setSpokenContent(RowContent content) {
    QStringList texts;
    for (const RowItem& item : content.items)
        for (const TextLine& line : item.lines)
            texts += line.text;
    setSpokenName(*this, texts.join(u' '));
    setContent(std::move(content));
}

RowGeometry PaintedRow::itemGeometry() const {
    return layOutRow(m_content, theme(), contentsRect().width());
}

QSize PaintedRow::sizeHint() const {
    const double width = naturalRowWidth(m_content, theme());
    const double height = layOutRow(m_content, theme(), width).height;
    return QSize(int(std::ceil(width)), int(std::ceil(height))).grownBy(contentsMargins());
}

QSize PaintedRow::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void PaintedRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintRow(painter, contentsRect().topLeft(), m_content, itemGeometry(), theme());
}

} // namespace lumora
