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

/// The thickness of regular lines, as it stands in each drawing.
constexpr double regularStroke = 1.25;

QByteArray drawing(const QString& name, double stroke) {
    QFile file(resourcePath(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto strokeWidth = [](double width) {
        return QByteArray("stroke-width=\"") + QByteArray::number(width) + '"';
    };
    return file.readAll().replace(strokeWidth(regularStroke), strokeWidth(regularStroke * stroke));
}

} // namespace

QImage renderSymbol(const QString& name, int pixels, const QColor& tint, double stroke) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(drawing(name, stroke)).render(&painter);
    // The drawings are black on nothing: only their coverage counts, the colour is ours.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), tint);
    return image;
}

} // namespace lumora
