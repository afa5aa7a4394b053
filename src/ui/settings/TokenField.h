#pragma once

#include "ui/settings/FormField.h"

namespace lumora {

/// A field for a secret. Nobody gets to know what is in it: not whoever looks on, not the
/// clipboard, not assistive programs, not the desktop's input methods.
class TokenField : public FormField {
    Q_OBJECT

public:
    /// `themes` must outlive the field.
    explicit TokenField(const ThemeSource& themes);

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
};

} // namespace lumora
