#include "views/TextShortening.h"

#include <QStringView>
#include <QTextBoundaryFinder>

#include <array>

namespace lumora {

namespace {

constexpr qsizetype mostCharacters = 16;
constexpr qsizetype wordBreakReach = 5; ///< characters given up at most to end on a whole word

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

QString shortTitle(const QString& title) {
    const QString text = trimmedBlanks(title);
    // Where each of the first characters begins, and the one after them.
    std::array<qsizetype, mostCharacters + 1> begin{};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (size_t i = 1; i < begin.size(); ++i) {
        begin[i] = finder.toNextBoundary();
        if (begin[i] < 0 || begin[i] == text.size())
            return text;
    }
    qsizetype cut = begin.back();
    for (size_t i = mostCharacters - 1; i >= mostCharacters - wordBreakReach; --i) {
        if (QStringView(text).sliced(begin[i], begin[i + 1] - begin[i]) == u" ") {
            cut = begin[i];
            break;
        }
    }
    return trimmed(QStringView(text).first(cut)).toString() + u'…';
}

} // namespace lumora
