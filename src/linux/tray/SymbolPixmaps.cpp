#include "linux/tray/SymbolPixmaps.h"

#include "symbols/SymbolRenderer.h"

#include <QPixmap>

namespace lumora {

namespace {

QColor tintFor(SymbolTone tone) {
    return tone == SymbolTone::Light ? QColor(0xf4, 0xf4, 0xf4) : QColor(0x2b, 0x2b, 0x2b);
}

} // namespace

SymbolPixmaps::SymbolPixmaps(const QString& symbol, SymbolTone tone) {
    for (const int pixels : {16, 22, 24, 32, 44, 48})
        m_images += renderSymbol(symbol, pixels, tintFor(tone));
}

QList<IconPixmap> SymbolPixmaps::forStatusItem() const {
    QList<IconPixmap> pixmaps;
    for (const QImage& image : m_images)
        pixmaps += IconPixmap::fromImage(image);
    return pixmaps;
}

QIcon SymbolPixmaps::icon() const {
    QIcon icon;
    for (const QImage& image : m_images)
        icon.addPixmap(QPixmap::fromImage(image));
    return icon;
}

} // namespace lumora
