#include "views/ReadingOrder.h"

#include <QLayout>
#include <QWidget>

namespace lumora {

namespace {

void appendStops(QWidget& widget, QList<QWidget*>& stops);

void appendStops(QLayout& layout, QList<QWidget*>& stops) {
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem* item = layout.itemAt(i);
        if (item->widget())
            appendStops(*item->widget(), stops);
        else if (item->layout())
            appendStops(*item->layout(), stops);
    }
}

void appendStops(QWidget& widget, QList<QWidget*>& stops) {
    if (!widget.isVisible() || !widget.isEnabled())
        return;
    if (widget.focusPolicy() & Qt::TabFocus)
        stops += &widget;
    if (widget.layout())
        appendStops(*widget.layout(), stops);
}

} // namespace

QList<QWidget*> tabStops(QWidget& root) {
    QList<QWidget*> stops;
    appendStops(root, stops);
    return stops;
}

} // namespace lumora
