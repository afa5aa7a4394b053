#include "ui/rows/PaintedRow.h"

#include "ui/rows/WidgetTexts.h"

#include <QPainter>

#include <utility>

namespace lumora {

PaintedRow::PaintedRow(const ThemeSource& themes, QMargins padding, QWidget* parent)
    : RowWidget(themes, padding, parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PaintedRow::setSpokenContent(RowContent content) {
    QStringList texts;
    for (const RowItem& item : content.items)
        for (const TextLine& line : item.lines)
            texts += line.text;
    setSpokenName(*this, texts.join(u' '));
    setContent(std::move(content));
}

void PaintedRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintContent(painter);
}

} // namespace lumora
