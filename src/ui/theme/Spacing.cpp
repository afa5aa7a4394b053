#include "ui/theme/Spacing.h"

#include "ui/theme/ThemeSource.h"

#include <QGuiApplication>
#include <QLayout>

namespace lumora {

QMargins directed(const QMargins& margins, Qt::LayoutDirection direction) {
    if (direction == Qt::LeftToRight)
        return margins;
    return {margins.right(), margins.top(), margins.left(), margins.bottom()};
}

void keepSpaced(
    QLayout& layout, const ThemeSource& themes, const QMargins& margins, double spacing) {
    const auto apply = [&layout, &themes, margins, spacing] {
        layout.setContentsMargins(
            themes.theme().pixels(directed(margins, QGuiApplication::layoutDirection())));
        layout.setSpacing(themes.theme().pixels(spacing));
    };
    QObject::connect(&themes, &ThemeSource::changed, &layout, apply);
    apply();
}

} // namespace lumora
