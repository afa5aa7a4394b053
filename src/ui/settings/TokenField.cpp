#include "ui/settings/TokenField.h"

#include <QAccessible>

namespace lumora {

namespace {

QAccessible::UpdateHandler nextListener = nullptr;

QString asShown(const QString& text) {
    return QString(text.size(), u'•');
}

bool isMasked(const QObject* object) {
    const auto* const field = qobject_cast<const QLineEdit*>(object);
    return field && field->echoMode() != QLineEdit::Normal;
}

void hear(QAccessibleEvent* event) {
    const auto masked = maskedEvent(*event);
    QAccessible::installUpdateHandler(nextListener);
    QAccessible::updateAccessibility(masked ? masked.get() : event);
    QAccessible::installUpdateHandler(&hear);
}

/// From now on, assistive programs hear of masked texts through `hear`. The toolkit by itself tells
/// them the text.
void maskSpokenText() {
    const auto before = QAccessible::installUpdateHandler(&hear);
    if (before != &hear)
        nextListener = before;
}

} // namespace

TokenField::TokenField(const ThemeSource& themes)
    : FormField(themes) {
    setEchoMode(Password);
    maskSpokenText();
}

QVariant TokenField::inputMethodQuery(Qt::InputMethodQuery query) const {
    switch (query) {
    case Qt::ImSurroundingText:
    case Qt::ImCurrentSelection:
    case Qt::ImTextBeforeCursor:
    case Qt::ImTextAfterCursor:
        return QString();
    default:
        return FormField::inputMethodQuery(query);
    }
}

std::unique_ptr<QAccessibleEvent> maskedEvent(QAccessibleEvent& event) {
    QObject* const object = event.object();
    if (!isMasked(object))
        return nullptr;
    switch (event.type()) {
    case QAccessible::TextInserted: {
        const auto& change = static_cast<QAccessibleTextInsertEvent&>(event);
        return std::make_unique<QAccessibleTextInsertEvent>(
            object, change.changePosition(), asShown(change.textInserted()));
    }
    case QAccessible::TextRemoved: {
        const auto& change = static_cast<QAccessibleTextRemoveEvent&>(event);
        return std::make_unique<QAccessibleTextRemoveEvent>(
            object, change.changePosition(), asShown(change.textRemoved()));
    }
    case QAccessible::TextUpdated: {
        const auto& change = static_cast<QAccessibleTextUpdateEvent&>(event);
        return std::make_unique<QAccessibleTextUpdateEvent>(
            object, change.changePosition(), asShown(change.textRemoved()),
            asShown(change.textInserted()));
    }
    default:
        return nullptr;
    }
}

} // namespace lumora
