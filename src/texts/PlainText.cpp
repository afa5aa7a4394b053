#include "texts/PlainText.h"

#include "briefing/Blanks.h"

#include <QStringList>
#include <QStringView>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr std::size_t titleCharacters = 16;
constexpr std::size_t wordBreakReach = 5; ///< characters given up at most to end on a whole word

} // namespace

QString singleLine(const QString& text) {
    QString line = text;
    std::replace_if(
        line.begin(), line.end(),
        [](QChar c) {
            return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                   c == QChar::ParagraphSeparator;
        },
        u' ');
    return line;
}

QString escapedForMarkup(const QString& text) {
    QStringList lines = text.split(u'\n');
    for (QString& line : lines) {
        // The ampersand first, or it would catch the entities of the others.
        line = singleLine(line).replace(u'&', "&amp;"_L1);
        line.replace(u'<', "&lt;"_L1).replace(u'>', "&gt;"_L1);
    }
    return lines.join(u'\n');
}

QString shortened(const QString& text, std::size_t maximum) {
    QString whole = withoutBlanks(text).toString();
    // Where each of the first characters begins, and the one after them.
    std::vector<qsizetype> begin(maximum + 1);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, whole);
    for (std::size_t i = 1; i < begin.size(); ++i) {
        begin[i] = finder.toNextBoundary();
        if (begin[i] < 0 || begin[i] == whole.size())
            return whole;
    }
    qsizetype cut = begin.back();
    for (std::size_t i = maximum - 1; i >= maximum - wordBreakReach; --i) {
        if (QStringView(whole).sliced(begin[i], begin[i + 1] - begin[i]) == u" ") {
            cut = begin[i];
            break;
        }
    }
    return withoutBlanks(QStringView(whole).first(cut)).toString() + u'…';
}

QString shortTitle(const QString& title) {
    return shortened(title, titleCharacters);
}

} // namespace lumora
