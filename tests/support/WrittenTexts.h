#pragma once

#include "support/ViewHarness.h"

#include <QAccessible>
#include <QMetaProperty>

namespace lumora::tests {

/// Everything that is written anywhere in the objects below `root`.
inline QStringList writtenIn(const QObject& root) {
    QStringList found;
    QList<const QObject*> objects{&root};
    for (const QObject* child : root.findChildren<QObject*>())
        objects += child;
    for (const QObject* object : objects) {
        for (int i = 0; i < object->metaObject()->propertyCount(); ++i)
            found += object->metaObject()->property(i).read(object).toString();
        for (const QByteArray& name : object->dynamicPropertyNames())
            found += object->property(name).toString();
        if (const auto* row = qobject_cast<const PaintedRow*>(object))
            found += textsOf(row->content());
        if (const auto* button = qobject_cast<const RowButton*>(object))
            found += textsOf(button->content());
    }
    return found;
}

/// Everything that a screen reader can learn from `interface` on downwards.
inline QStringList spokenBy(QAccessibleInterface* interface) {
    QStringList found;
    if (!interface)
        return found;
    for (const auto kind :
         {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
        found += interface->text(kind);
    if (auto* text = interface->textInterface())
        found += text->text(0, text->characterCount());
    if (auto* value = interface->valueInterface())
        found += value->currentValue().toString();
    for (int i = 0; i < interface->childCount(); ++i)
        found += spokenBy(interface->child(i));
    return found;
}

} // namespace lumora::tests
