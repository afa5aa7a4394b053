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
    QFont font;    ///< its family; size and weight are chosen for the place
    int scale = 1; ///< device pixels per point, for what is drawn in one size only

    bool operator==(const LabelPicture&) const = default;
};

/// The height in points of pictures that are wider than high: what most bars have for their items.
constexpr int wideHeight = 22;

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
    QSize m_room{wideHeight, wideHeight};
};

} // namespace lumora
