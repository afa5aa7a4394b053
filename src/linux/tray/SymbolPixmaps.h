#pragma once

#include "linux/tray/TrayTypes.h"
#include "platform/BarAppearance.h"

#include <QIcon>
#include <QImage>
#include <QList>
#include <QString>

namespace lumora {

/// A symbol in the sizes that panels use, up to twice the usual ones for sharp screens.
class SymbolPixmaps {
public:
    /// Draws the symbol called `symbol`.
    SymbolPixmaps(const QString& symbol, SymbolTone tone);

    /// For status items, smallest first.
    QList<IconPixmap> forStatusItem() const;

    /// For the toolkit.
    QIcon icon() const;

private:
    QList<QImage> m_images;
};

} // namespace lumora
