#include "linux/tray/LabelDrawing.h"

#include "symbols/SymbolRenderer.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace lumora {

namespace {

/// How much of the square's height a digit takes.
constexpr double digitShare = 0.62;
/// Pressed together any further, letters run into each other.
constexpr int tightestStretch = 62;

/// The size of the letters in a wide picture, as a share of its height.
constexpr double letterShare = 0.62;
constexpr double gapShare = 0.22;

QChar widestDigit(const QFontMetricsF& metrics) {
    constexpr std::u16string_view digits = u"0123456789";
    return *std::ranges::max_element(
        digits, {}, [&](char16_t digit) { return metrics.horizontalAdvance(QChar(digit)); });
}

double steadyWidth(const QString& text, const QFontMetricsF& metrics) {
    return metrics.horizontalAdvance(withEveryDigit(text, widestDigit(metrics)));
}

QFont sized(QFont font, double pixels, QFont::Weight weight) {
    font.setPixelSize(std::max(1, int(std::lround(pixels))));
    font.setWeight(weight);
    font.setStretch(QFont::Unstretched);
    return font;
}

QFont fittingSquare(const QString& text, int pixels, const QFont& font) {
    constexpr double sample = 100;
    QFont bold = sized(font, sample, QFont::Bold);
    // A font that does not know the height of its capitals counts as one in which they are as high
    // as letters can be.
    const double known = QFontMetricsF(bold).capHeight();
    const double capHeight = known > 0 ? known : sample;
    const double size = pixels * digitShare * sample / capHeight;
    bold = sized(font, size, QFont::Bold);
    const double width = steadyWidth(text, QFontMetricsF(bold));
    if (width <= pixels)
        return bold;
    const double share = 100 * pixels / width;
    if (share < tightestStretch)
        bold = sized(font, size * share / tightestStretch, QFont::Bold);
    bold.setStretch(std::max(tightestStretch, int(share)));
    return bold;
}

/// The baseline on which capital letters and digits stand in the middle of `height`.
double middleBaseline(int height, const QFontMetricsF& metrics) {
    return std::round((height + metrics.capHeight()) / 2);
}

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// What each digit of `text` is narrower than the widest of its font, and 0 for all else.
QList<double> spareWidths(const QString& text, const QFontMetricsF& metrics) {
    const double place = metrics.horizontalAdvance(widestDigit(metrics));
    QList<double> widths;
    for (const QChar c : text)
        widths += isDigit(c) ? place - metrics.horizontalAdvance(c) : 0;
    return widths;
}

/// Draws `text` with its baseline at `start`, each digit in the middle of a place that is as wide
/// as the widest of them: what stands behind the digits does not move as they change.
void drawSteadily(QPainter& painter, QPointF start, const QString& text) {
    const QList<double> spare = spareWidths(text, QFontMetricsF(painter.font()));
    QList<QTextLayout::FormatRange> spacings;
    for (int i = 0; i < text.size(); ++i) {
        // Half of it goes before the digit, behind the character there; never into a composed one.
        const bool takesMore = text[i].unicode() < 0x80;
        const double spacing = (spare[i] + (takesMore ? spare.value(i + 1) : 0)) / 2;
        if (spacing <= 0)
            continue;
        QTextLayout::FormatRange range{.start = i, .length = 1, .format = {}};
        range.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        range.format.setFontLetterSpacing(spacing);
        spacings += range;
    }
    QTextLayout layout(text, painter.font());
    layout.setTextOption(QTextOption(Qt::AlignLeft | Qt::AlignAbsolute));
    layout.setFormats(spacings);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    layout.draw(&painter, start + QPointF(spare.value(0) / 2, -line.ascent()));
}

QImage transparent(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QString withEveryDigit(QString text, QChar digit) {
    for (QChar& c : text) {
        if (isDigit(c))
            c = digit;
    }
    return text;
}

QImage drawTextInSquare(const QString& text, int pixels, const QColor& color, const QFont& font) {
    QImage image = transparent(pixels, pixels);
    QPainter painter(&image);
    painter.setFont(fittingSquare(text, pixels, font));
    painter.setPen(color);
    const QFontMetricsF metrics(painter.font());
    const double left = (pixels - steadyWidth(text, metrics)) / 2;
    drawSteadily(painter, QPointF(left, middleBaseline(pixels, metrics)), text);
    return image;
}

QImage drawSymbolAndText(
    const QString& symbol, const QString& text, int height, const QColor& color,
    const QFont& font) {
    const QFont letters = sized(font, height * letterShare, QFont::Medium);
    const QFontMetricsF metrics(letters);
    const double left = height * (1 + gapShare);
    QImage image = transparent(int(std::ceil(left + steadyWidth(text, metrics))), height);
    QPainter painter(&image);
    painter.drawImage(0, 0, renderSymbol(symbol, height, color));
    painter.setFont(letters);
    painter.setPen(color);
    drawSteadily(painter, QPointF(left, middleBaseline(height, metrics)), text);
    return image;
}

} // namespace lumora
