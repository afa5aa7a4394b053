#include "ui/rows/RowPainter.h"

#include "symbols/SymbolRenderer.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPixmapCache>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// How thick lines of `weight` are beside regular ones.
double strokeFactor(QFont::Weight weight) {
    if (weight >= QFont::Bold)
        return 1.6;
    return weight >= QFont::DemiBold ? 1.4 : 1;
}

QPixmap symbolPixmap(const QString& name, int pixels, const SymbolStyle& style) {
    const double stroke = strokeFactor(style.weight);
    const QString key = u"symbol/%1/%2/%3/%4"_s.arg(name)
                            .arg(pixels)
                            .arg(style.tint.rgba(), 8, 16, QChar(u'0'))
                            .arg(stroke);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap::fromImage(renderSymbol(name, pixels, style.tint, stroke));
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

void paintBar(QPainter& painter, const QRectF& rect, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, rect.width() / 2, rect.width() / 2);
}

void paintCapsule(QPainter& painter, const QRectF& rect, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
}

} // namespace

void paintSpinner(QPainter& painter, const QRectF& square, const QColor& color, double rotation) {
    constexpr double strokeShare = 1.5 / 14;
    const double stroke = square.width() * strokeShare;
    constexpr double sweep = 270;
    // Arcs are counted in sixteenths of a degree, counter-clockwise from three o'clock.
    const auto sixteenths = [](double degrees) { return int(std::lround(degrees * 16)); };
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(
        square.adjusted(stroke, stroke, -stroke, -stroke), sixteenths(-rotation),
        sixteenths(sweep));
}

void paintSymbol(
    QPainter& painter, const QRectF& square, const QString& name, const SymbolStyle& style) {
    // Of what is painted on in the end, which may be a picture of the widget.
    const double ratio = painter.paintEngine()->paintDevice()->devicePixelRatioF();
    const QPixmap pixmap = symbolPixmap(name, int(std::lround(square.width() * ratio)), style);
    if (style.rotation == 0) {
        // On a device pixel: anywhere else the drawing would blur.
        const QPointF corner(
            std::round(square.left() * ratio) / ratio, std::round(square.top() * ratio) / ratio);
        painter.drawPixmap(QRectF(corner, square.size()), pixmap, QRectF(pixmap.rect()));
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(square.center());
    painter.rotate(style.rotation);
    painter.translate(-square.center());
    painter.drawPixmap(square, pixmap, QRectF(pixmap.rect()));
    painter.restore();
}

namespace {

/// A symbol keeps its size in a column of its own width, in the middle.
void paintSymbolItem(
    QPainter& painter, const QRectF& rect, const RowItem& item, const Theme& theme) {
    const double edge = symbolEdge(item.style.role, theme);
    QRectF square(0, 0, edge, edge);
    square.moveCenter(rect.center());
    const SymbolStyle style{
        .tint = theme.color(item.style.color),
        .weight = item.style.weight,
        .rotation = item.rotation,
    };
    paintSymbol(painter, square, item.symbol, style);
}

} // namespace

void paintRow(
    QPainter& painter, const QPointF& origin, const RowContent& content,
    const RowGeometry& geometry, const Theme& theme) {
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        const RowItem& item = content.items[i];
        const QRectF rect = geometry.items[i].translated(origin);
        switch (item.kind) {
        case RowItem::Kind::Symbol:
            paintSymbolItem(painter, rect, item, theme);
            break;
        case RowItem::Kind::Bar:
            paintBar(painter, rect, item.barColor);
            break;
        case RowItem::Kind::Badge:
            paintCapsule(painter, rect, theme.color(ColorRole::Quaternary));
            break;
        case RowItem::Kind::Spinner:
            paintSpinner(painter, rect, theme.color(item.style.color), item.rotation);
            break;
        case RowItem::Kind::Text:
        case RowItem::Kind::Space:
            break;
        }
    }
    for (const PlacedLine& line : geometry.lines) {
        // Whole points keep the letters sharp.
        const QPointF baseline = origin + line.baseline;
        line.text.draw(painter, {baseline.x(), std::round(baseline.y())});
    }
}

} // namespace lumora
