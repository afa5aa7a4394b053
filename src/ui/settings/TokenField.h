#pragma once

#include "ui/settings/FormField.h"

#include <memory>

class QAccessibleEvent;

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

/// What assistive programs are told instead of `event`, a change in a field whose text is masked:
/// so many masked characters, as everybody sees it. Null when the event gives nothing away.
[[nodiscard]] std::unique_ptr<QAccessibleEvent> maskedEvent(QAccessibleEvent& event);

} // namespace lumora
