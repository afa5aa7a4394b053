#include "linux/tray/LabelPixmaps.h"

#include "linux/tray/LabelDrawing.h"
#include "symbols/SymbolRenderer.h"

#include <QPixmap>

namespace lumora {

namespace {

QColor tintFor(SymbolTone tone) {
    return tone == SymbolTone::Light ? QColor(0xf4, 0xf4, 0xf4) : QColor(0x2b, 0x2b, 0x2b);
}

} // namespace

LabelPixmaps::LabelPixmaps(const LabelPicture& picture) {
    const QColor tint = tintFor(picture.tone);
    if (!picture.symbol.isEmpty() && !picture.text.isEmpty()) {
        // One size only: hosts that draw wide pictures choose badly among several, or draw none.
        m_images += drawSymbolAndText(
            picture.symbol, picture.text, picture.height * picture.scale, tint, picture.font);
        m_room = m_images.first().size() / picture.scale;
        return;
    }
    for (const int pixels : {16, 22, 24, 32, 44, 48})
        m_images += picture.text.isEmpty()
                        ? renderSymbol(picture.symbol, pixels, tint)
                        : drawTextInSquare(picture.text, pixels, tint, picture.font);
}

QList<IconPixmap> LabelPixmaps::forStatusItem() const {
    QList<IconPixmap> pixmaps;
    for (const QImage& image : m_images)
        pixmaps += IconPixmap::fromImage(image);
    return pixmaps;
}

QIcon LabelPixmaps::icon() const {
    QIcon icon;
    for (const QImage& image : m_images)
        icon.addPixmap(QPixmap::fromImage(image));
    return icon;
}

} // namespace lumora
