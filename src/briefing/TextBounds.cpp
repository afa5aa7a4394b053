#include "briefing/TextBounds.h"

#include <QStringView>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace lumora {

namespace {

/// How far before the bound the end of a character is looked for. What is longer is torn: it is a
/// letter under a heap of marks.
constexpr qsizetype reach = 64;

bool isBetweenHalves(QStringView text, qsizetype index) {
    return index > 0 && text[index - 1].isHighSurrogate() && text[index].isLowSurrogate();
}

/// The last end of a character in `text` at or before `end`, which lies inside of `text`.
qsizetype lastBoundary(QStringView text, qsizetype end) {
    const qsizetype begin = std::max(qsizetype{0}, end - reach);
    // What follows says whether something ends there; it may be a pair.
    const QStringView near = text.sliced(begin).first(std::min(end + 2, text.size()) - begin);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, near.data(), near.size());
    finder.setPosition(end - begin);
    const qsizetype found = finder.isAtBoundary() ? end - begin : finder.toPreviousBoundary();
    const qsizetype boundary = found > 0 ? begin + found : end;
    return isBetweenHalves(text, boundary) ? boundary - 1 : boundary;
}

} // namespace

QString beginning(const QString& text, qsizetype longest) {
    if (text.size() <= longest)
        return text;
    constexpr QChar ellipsis = u'…';
    return text.first(lastBoundary(text, longest - 1)) + ellipsis;
}

} // namespace lumora
