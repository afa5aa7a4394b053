#include "ui/settings/TokenField.h"

#include "ui/settings/MaskedSpeech.h"

namespace lumora {

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

} // namespace lumora
