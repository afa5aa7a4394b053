#include "views/TextDrawing.h"

#include "model/SingleLine.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace lumora {

namespace {

QFont fontOf(const TextStyle& style, const Theme& theme) {
    QFont font = theme.font(style.role, style.weight);
    font.setStrikeOut(style.struckThrough);
    return font;
}

/// The cell that every digit stands in where digits have equal width.
double digitCell(const QFontMetricsF& metrics) {
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

/// Calls `piece(text, width, isDigit)` for the parts of `line` that are placed on their own: each
/// digit, and each run of anything else.
template <typename Piece>
void forEachPiece(const TextLine& line, const QFontMetricsF& metrics, Piece piece) {
    const QString text = singleLine(line.text);
    if (!line.style.equalWidthDigits) {
        piece(text, metrics.horizontalAdvance(text), false);
        return;
    }
    const double cell = digitCell(metrics);
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = begin + 1;
        if (text[begin].isDigit()) {
            piece(text.sliced(begin, 1), cell, true);
        } else {
            while (end < text.size() && !text[end].isDigit())
                ++end;
            const QString run = text.sliced(begin, end - begin);
            piece(run, metrics.horizontalAdvance(run), false);
        }
        begin = end;
    }
}

} // namespace

double textWidth(const TextLine& line, const Theme& theme) {
    const QFontMetricsF metrics(fontOf(line.style, theme));
    double width = 0;
    forEachPiece(
        line, metrics, [&](const QString&, double pieceWidth, bool) { width += pieceWidth; });
    return width;
}

TextLine elidedLine(const TextLine& line, const Theme& theme, double width) {
    if (textWidth(line, theme) <= width)
        return line;
    const QFontMetricsF metrics(fontOf(line.style, theme));
    const QString text = singleLine(line.text);
    return {metrics.elidedText(text, Qt::ElideRight, std::max(0.0, width)), line.style};
}

void drawText(
    QPainter& painter, const QPointF& baseline, const TextLine& line, const Theme& theme) {
    const QFont font = fontOf(line.style, theme);
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    painter.setPen(theme.color(line.style.color));
    QPointF position = baseline;
    forEachPiece(line, metrics, [&](const QString& text, double width, bool isDigit) {
        const double inset = isDigit ? (width - metrics.horizontalAdvance(text)) / 2 : 0;
        painter.drawText(position + QPointF(inset, 0), text);
        position.rx() += width;
    });
}

} // namespace lumora
