#include "ui/rows/RowPainter.h"

#include "symbols/SymbolRenderer.h"
#include "ui/rows/TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPixmapCache>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QPixmap symbolPixmap(const QString& name, int pixels, const QColor& tint) {
    const QString key =
        u"symbol/%1/%2/%3"_s.arg(name).arg(pixels).arg(tint.rgba(), 8, 16, QChar(u'0'));
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap::fromImage(renderSymbol(name, pixels, tint));
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

void paintTexts(QPainter& painter, const QRectF& rect, const RowItem& item, const Theme& theme) {
    double top = rect.top();
    for (const TextLine& line : item.lines) {
        const QFontMetricsF metrics(theme.font(line.style.role, line.style.weight));
        // A fixed column may be a hair too narrow for its text; only shrinking texts end with "…".
        const TextLine shown = item.shrinks ? elidedLine(line, theme, rect.width()) : line;
        // Whole points keep the letters sharp.
        const QPointF baseline(rect.left(), std::round(top + metrics.ascent()));
        drawText(painter, baseline, shown, theme);
        top += metrics.height();
    }
}

void paintBar(QPainter& painter, const QRectF& rect, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, rect.width() / 2, rect.width() / 2);
}

void paintBadge(QPainter& painter, const QRectF& rect, const RowItem& item, const Theme& theme) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.color(ColorRole::Quaternary));
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    const TextLine& line = item.lines.front();
    const QFontMetricsF metrics(theme.font(line.style.role, line.style.weight));
    const double left = rect.center().x() - textWidth(line, theme) / 2;
    const double top = rect.center().y() - metrics.height() / 2;
    drawText(painter, {left, std::round(top + metrics.ascent())}, line, theme);
}

void paintSpinner(QPainter& painter, const QRectF& square, const QColor& color, double rotation) {
    constexpr double stroke = 1.5;
    constexpr double sweep = 270;
    // Arcs are counted in sixteenths of a degree, counter-clockwise from three o'clock.
    const auto sixteenths = [](double degrees) { return int(std::lround(degrees * 16)); };
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(
        square.adjusted(stroke, stroke, -stroke, -stroke), sixteenths(-rotation),
        sixteenths(sweep));
}

} // namespace

void paintSymbol(
    QPainter& painter, const QRectF& square, const QString& name, const QColor& tint,
    double rotation) {
    const double ratio = painter.device()->devicePixelRatioF();
    const QPixmap pixmap = symbolPixmap(name, int(std::lround(square.width() * ratio)), tint);
    if (rotation == 0) {
        // On a device pixel: anywhere else the drawing would blur.
        const QPointF corner(
            std::round(square.left() * ratio) / ratio, std::round(square.top() * ratio) / ratio);
        painter.drawPixmap(QRectF(corner, square.size()), pixmap, QRectF(pixmap.rect()));
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(square.center());
    painter.rotate(rotation);
    painter.translate(-square.center());
    painter.drawPixmap(square, pixmap, QRectF(pixmap.rect()));
    painter.restore();
}

void paintRow(
    QPainter& painter, const QPointF& origin, const RowContent& content,
    const RowGeometry& geometry, const Theme& theme) {
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        const RowItem& item = content.items[i];
        const QRectF rect = geometry.items[i].translated(origin);
        switch (item.kind) {
        case RowItem::Kind::Text:
            paintTexts(painter, rect, item, theme);
            break;
        case RowItem::Kind::Symbol:
            paintSymbol(painter, rect, item.symbol, theme.color(item.style.color), item.rotation);
            break;
        case RowItem::Kind::Bar:
            paintBar(painter, rect, item.barColor);
            break;
        case RowItem::Kind::Badge:
            paintBadge(painter, rect, item, theme);
            break;
        case RowItem::Kind::Spinner:
            paintSpinner(painter, rect, theme.color(item.style.color), item.rotation);
            break;
        case RowItem::Kind::Space:
            break;
        }
    }
}

} // namespace lumora
