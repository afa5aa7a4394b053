#include "ui/access/ReadingOrder.h"

#include <QLayout>
#include <QScrollArea>
#include <QWidget>

namespace lumora {

namespace {

void appendParts(const QLayout& layout, QList<QWidget*>& parts) {
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem* item = layout.itemAt(i);
        if (item->widget())
            parts += item->widget();
        else if (item->layout())
            appendParts(*item->layout(), parts);
    }
}

void appendLeaves(const QWidget& widget, QList<QWidget*>& leaves) {
    const QList<QWidget*> parts = partsInReadingOrder(widget);
    for (QWidget* part : parts) {
        if (hasParts(*part))
            appendLeaves(*part, leaves);
        else
            leaves += part;
    }
}

} // namespace

QList<QWidget*> partsInReadingOrder(const QWidget& widget) {
    QList<QWidget*> parts;
    if (widget.layout())
        appendParts(*widget.layout(), parts);
    else if (const auto* const scroller = qobject_cast<const QScrollArea*>(&widget))
        parts += scroller->widget();
    return parts;
}

bool hasParts(const QWidget& widget) {
    return widget.layout() || qobject_cast<const QScrollArea*>(&widget);
}

QList<QWidget*> leavesInReadingOrder(const QWidget& root) {
    QList<QWidget*> leaves;
    appendLeaves(root, leaves);
    return leaves;
}

bool isDecoration(const QWidget& leaf) {
    return leaf.accessibleName().isEmpty() && leaf.focusPolicy() == Qt::NoFocus;
}

} // namespace lumora
