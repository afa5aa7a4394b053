#pragma once

#include "linux/tray/TrayTypes.h"
#include "platform/BarAppearance.h"

#include <QFont>
#include <QIcon>
#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

namespace lumora {

/// What is drawn into the item's pixels.
struct LabelPicture {
    QString symbol; ///< empty: the text alone
    QString text;   ///< empty: the symbol alone
    SymbolTone tone = SymbolTone::Light;
    QFont font;      ///< its family; size and weight are chosen for the place
    int height = 22; ///< of symbol and text together, in points; either alone has many sizes
    int scale = 1;   ///< device pixels per point, likewise

    bool operator==(const LabelPicture&) const = default;
};

/// A picture in the sizes that panels use, up to twice the usual ones for sharp screens. Symbols
/// and texts are drawn into squares; both together into one picture as wide as they are.
class LabelPixmaps {
public:
    explicit LabelPixmaps(const LabelPicture& picture);

    /// For status items, smallest first.
    QList<IconPixmap> forStatusItem() const;

    /// For the toolkit.
    QIcon icon() const;

    /// What it takes in points to be seen as it was drawn.
    QSize room() const { return m_room; }

private:
    QList<QImage> m_images;
    QSize m_room{22, 22};
};

} // namespace lumora
