#include "views/TextShortening.h"

#include <QStringView>
#include <QTextBoundaryFinder>

#include <vector>

namespace lumora {

namespace {

constexpr std::size_t titleCharacters = 16;
constexpr std::size_t wordBreakReach = 5; ///< characters given up at most to end on a whole word

QStringView trimmed(QStringView text) {
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

} // namespace

QString trimmedBlanks(const QString& text) {
    return trimmed(text).toString();
}

QString shortened(const QString& text, std::size_t most) {
    QString whole = trimmedBlanks(text);
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
    return trimmed(QStringView(whole).first(cut)).toString() + u'…';
}

QString shortTitle(const QString& title) {
    return shortened(title, titleCharacters);
}

} // namespace lumora
