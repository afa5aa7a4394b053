#include "ui/rows/TextDrawing.h"

#include "briefing/TextBounds.h"
#include "texts/PlainText.h"

#include <QCache>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// UTF-16 units of a line that are measured and drawn. A row has room for half of them, and there
/// may be a thousand rows.
constexpr qsizetype longestDrawn = 200;

/// What of `line` is measured and drawn, on one line.
TextLine drawnPart(const TextLine& line) {
    return {singleLine(beginning(line.text, longestDrawn)), line.style};
}

/// Pictures, and next to nothing else, are beyond what one unit of a text can tell.
bool hasPictures(const QString& text) {
    return std::any_of(
        text.cbegin(), text.cend(), [](QChar character) { return character.isSurrogate(); });
}

/// A text as the fonts shape it, with its width.
struct ShapedText {
    double width = 0;
    QList<QGlyphRun> glyphs;
};

/// Whether `text` is a short mark with a picture in it, such as a streak's figure and flame.
bool isPictorial(const QString& text) {
    constexpr qsizetype maximumLength = 16;
    const auto isLetter = [](QChar character) { return character.isLetter(); };
    return text.size() <= maximumLength && hasPictures(text) &&
           std::none_of(text.cbegin(), text.cend(), isLetter);
}

QFont withPictures(const QFont& font) {
    static const QString family = familyOfPictures();
    return withFamily(font, family);
}

/// `text` with its baseline at 0. It runs the way it is written, whatever is around it.
ShapedText shape(const QString& text, const QFont& font) {
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    // Where the glyphs stand is counted from the line's top.
    line.setPosition({0, -line.ascent()});
    return {line.naturalTextWidth(), layout.glyphRuns()};
}

/// Fonts of colour pictures keep nothing: each time a text is measured or drawn they unpack the
/// pictures in it, which takes longer than all else in a row. Only marks are kept here: what a
/// person may want hidden, words and plain figures, is not.
const ShapedText& pictureRun(const QString& text, const QFont& font, const QFontMetricsF& metrics) {
    constexpr qsizetype maximumRuns = 64;
    static QCache<QString, ShapedText> runs(maximumRuns);
    const QString key = font.key() + u' ' + QString::number(metrics.height()) + u'\n' + text;
    if (ShapedText* known = runs.object(key))
        return *known;
    auto* made = new ShapedText(shape(text, withPictures(font)));
    runs.insert(key, made); // one alone always fits
    return *made;
}

/// What the drawn part `line` is measured and drawn with, except for the marks that are kept.
QFont fontOf(const TextLine& line, const Theme& theme) {
    const QFont font = theme.font(line.style.role, line.style.weight);
    return hasPictures(line.text) && !isPictorial(line.text) ? withPictures(font) : font;
}

double widthOf(const QString& text, const QFont& font, const QFontMetricsF& metrics) {
    return isPictorial(text) ? pictureRun(text, font, metrics).width
                             : metrics.horizontalAdvance(text);
}

/// The cell that every digit stands in where digits have equal width.
double digitCell(const QFontMetricsF& metrics) {
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

/// Letters that fonts for Latin, Greek and Cyrillic often leave to others.
bool isOfAnotherScript(QChar character) {
    constexpr char16_t firstOther = 0x0590;
    return character.unicode() >= firstOther && character.isLetter();
}

/// The first letter of each other script in `text`: it tells which font stands in for the script.
QString otherLetters(const QString& text) {
    QString letters;
    QList<QChar::Script> scripts;
    for (const QChar character : text) {
        if (!isOfAnotherScript(character) || scripts.contains(character.script()))
            continue;
        scripts += character.script();
        letters += character;
    }
    return letters;
}

/// Laying a text out is the only way to learn how high its fonts are, and takes the time in a long
/// list; there are few fonts, though.
LineHeight
heightOfLetters(const QString& letters, const QFont& font, const QFontMetricsF& metrics) {
    constexpr qsizetype maximumHeights = 64;
    static QCache<QString, LineHeight> heights(maximumHeights);
    const QString key = font.key() + u' ' + QString::number(metrics.height()) + u'\n' + letters;
    if (const LineHeight* known = heights.object(key))
        return *known;
    QTextLayout layout(letters, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const LineHeight height{.ascent = line.ascent(), .whole = line.ascent() + line.descent()};
    heights.insert(key, new LineHeight(height)); // one alone always fits
    return height;
}

bool runsFromRight(QChar character) {
    switch (character.direction()) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirRLE:
    case QChar::DirRLI:
    case QChar::DirRLO:
        return true;
    default:
        return character == QChar(0x200f); // the mark that some locales put before an amount
    }
}

/// Whether the digits of `text` stand in cells. Pieces stand from left to right; a text that runs
/// the other way is left whole.
bool isInCells(const QString& text, const TextStyle& style) {
    return style.equalWidthDigits && !text.isRightToLeft() &&
           std::none_of(text.cbegin(), text.cend(), runsFromRight);
}

/// Calls `piece(text, width, isDigit)` for the parts of `text` that are placed on their own: each
/// digit, and each run of anything else.
template <typename Piece>
void forEachPiece(
    const QString& text, const QFont& font, const QFontMetricsF& metrics, Piece piece) {
    const double cell = digitCell(metrics);
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = begin + 1;
        if (text[begin].isDigit()) {
            piece(text.sliced(begin, 1), cell, true);
        } else {
            while (end < text.size() && !text[end].isDigit())
                ++end;
            const QString run = text.sliced(begin, end - begin);
            piece(run, widthOf(run, font, metrics), false);
        }
        begin = end;
    }
}

double widthOfDrawn(const TextLine& line, const Theme& theme) {
    const QFont font = fontOf(line, theme);
    const QFontMetricsF metrics(font);
    if (!isInCells(line.text, line.style))
        return widthOf(line.text, font, metrics);
    double width = 0;
    forEachPiece(line.text, font, metrics, [&](const QString&, double pieceWidth, bool) {
        width += pieceWidth;
    });
    return width;
}

bool fits(const TextLine& drawn, const Theme& theme, double width) {
    // Columns are computed in points and back, which may cost a hair.
    constexpr double hair = 0.01;
    return widthOfDrawn(drawn, theme) <= width + hair;
}

QList<QGlyphRun> glyphsOf(const QString& text, const QFont& font, const QFontMetricsF& metrics) {
    return isPictorial(text) ? pictureRun(text, font, metrics).glyphs : shape(text, font).glyphs;
}

QList<QGlyphRun> movedRight(QList<QGlyphRun> glyphs, double distance) {
    for (QGlyphRun& run : glyphs) {
        QList<QPointF> positions = run.positions();
        for (QPointF& position : positions)
            position.rx() += distance;
        run.setPositions(positions);
    }
    return glyphs;
}

} // namespace

QString familyOfPictures() {
    QFont wanted(u"emoji"_s); // what the desktop's font configuration takes for it
    wanted.setStyleStrategy(QFont::NoFontMerging);
    constexpr char32_t fire = U'🔥';
    return QFontMetrics(wanted).inFontUcs4(fire) ? QFontInfo(wanted).family() : QString();
}

QFont withFamily(QFont font, const QString& family) {
    // By the name of what is used: next after a name that is not known, `family` would come first.
    if (!family.isEmpty())
        font.setFamilies({QFontInfo(font).family(), family});
    return font;
}

double textWidth(const TextLine& line, const Theme& theme) {
    return widthOfDrawn(drawnPart(line), theme);
}

LineHeight lineHeight(const TextLine& line, const Theme& theme) {
    const TextLine drawn = drawnPart(line);
    const QFont font = fontOf(drawn, theme);
    const QFontMetricsF metrics(font);
    // Pictures are as high as the letters beside them, whatever their font says.
    const QString letters = otherLetters(drawn.text);
    if (letters.isEmpty())
        return {.ascent = metrics.ascent(), .whole = metrics.height()};
    const LineHeight others = heightOfLetters(letters, font, metrics);
    const double ascent = std::max(metrics.ascent(), others.ascent);
    const double descent = std::max(metrics.descent(), others.whole - others.ascent);
    return {.ascent = ascent, .whole = ascent + descent};
}

bool isCut(const TextLine& line, const Theme& theme, double width) {
    return line.text.size() > longestDrawn || !fits(drawnPart(line), theme, width);
}

TextLine elidedLine(const TextLine& line, const Theme& theme, double width) {
    TextLine drawn = drawnPart(line);
    if (fits(drawn, theme, width))
        return drawn;
    const QFontMetricsF metrics(fontOf(drawn, theme));
    return {metrics.elidedText(drawn.text, Qt::ElideRight, std::max(0.0, width)), drawn.style};
}

ShapedLine::ShapedLine(const TextLine& line, const Theme& theme)
    : m_color(theme.color(line.style.color)) {
    const QFont font = fontOf(line, theme);
    const QFontMetricsF metrics(font);
    if (line.style.struckThrough)
        m_strike.emplace(
            0, -metrics.strikeOutPos() - metrics.lineWidth() / 2, widthOfDrawn(line, theme),
            metrics.lineWidth());
    if (!isInCells(line.text, line.style)) {
        m_glyphs = glyphsOf(line.text, font, metrics);
        return;
    }
    double left = 0;
    forEachPiece(line.text, font, metrics, [&](const QString& piece, double width, bool isDigit) {
        const double inset = isDigit ? (width - metrics.horizontalAdvance(piece)) / 2 : 0;
        m_glyphs += movedRight(glyphsOf(piece, font, metrics), left + inset);
        left += width;
    });
}

void ShapedLine::draw(QPainter& painter, const QPointF& baseline) const {
    painter.setPen(m_color);
    for (const QGlyphRun& run : m_glyphs)
        painter.drawGlyphRun(baseline, run);
    if (m_strike)
        painter.fillRect(m_strike->translated(baseline), m_color);
}

} // namespace lumora
