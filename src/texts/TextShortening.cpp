#include "texts/TextShortening.h"

#include "briefing/Blanks.h"

#include <QStringView>
#include <QTextBoundaryFinder>

#include <vector>

namespace lumora {

namespace {

constexpr std::size_t titleCharacters = 16;
constexpr std::size_t wordBreakReach = 5; ///< characters given up at most to end on a whole word

} // namespace

QString shortened(const QString& text, std::size_t most) {
    QString whole = withoutBlanks(text).toString();
    // Where each of the first characters begins, and the one after them.
    std::vector<qsizetype> begin(most + 1);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, whole);
    for (std::size_t i = 1; i < begin.size(); ++i) {
        begin[i] = finder.toNextBoundary();
        if (begin[i] < 0 || begin[i] == whole.size())
            return whole;
    }
    qsizetype cut = begin.back();
    for (std::size_t i = most - 1; i >= most - wordBreakReach; --i) {
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
