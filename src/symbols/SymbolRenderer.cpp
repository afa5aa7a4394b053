#include "symbols/SymbolRenderer.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString resourcePath(const QString& name) {
    const QString path = u":/symbols/%1.svg"_s.arg(name);
    return QFile::exists(path) ? path : u":/symbols/calendar.svg"_s;
}

} // namespace

QImage renderSymbol(const QString& name, int pixels, const QColor& tint) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(resourcePath(name)).render(&painter);
    // The drawings are black on nothing: only their coverage counts, the colour is ours.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), tint);
    return image;
}

} // namespace lumora
