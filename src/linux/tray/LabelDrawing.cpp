#include "linux/tray/LabelDrawing.h"

#include "symbols/SymbolRenderer.h"

#include <QFontMetricsF>
#include <QPainter>

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

QImage transparent(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QString withEveryDigit(QString text, QChar digit) {
    for (QChar& c : text) {
        if (c >= u'0' && c <= u'9')
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
    const double left = (pixels - metrics.horizontalAdvance(text)) / 2;
    painter.drawText(QPointF(left, middleBaseline(pixels, metrics)), text);
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
    painter.drawText(QPointF(left, middleBaseline(height, metrics)), text);
    return image;
}

} // namespace lumora
