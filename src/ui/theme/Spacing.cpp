#include "ui/theme/Spacing.h"

#include "ui/theme/ThemeSource.h"

#include <QLayout>

namespace lumora {

void keepSpaced(
    QLayout& layout, const ThemeSource& themes, const QMargins& margins, double spacing) {
    const auto apply = [&layout, &themes, margins, spacing] {
        layout.setContentsMargins(themes.theme().pixels(margins));
        layout.setSpacing(themes.theme().pixels(spacing));
    };
    QObject::connect(&themes, &ThemeSource::changed, &layout, apply);
    apply();
}

} // namespace lumora
