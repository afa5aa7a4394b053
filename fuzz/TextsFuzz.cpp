// Titles of any characters whatsoever, halves of pairs among them: shown on a line, within markup,
// and shortened.
//
// The input is UTF-8; behind a first byte 255 it is UTF-16 of any kind.

#include "Expectations.h"
#include "Targets.h"
#include "briefing/Blanks.h"
#include "briefing/TextBounds.h"
#include "texts/CharacterFinder.h"
#include "texts/PlainText.h"

#include <algorithm>
#include <cstring>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

QString textIn(QByteArrayView input) {
    if (!input.startsWith(char(-1)))
        return QString::fromUtf8(input);
    QString text((input.size() - 1) / 2, Qt::Uninitialized);
    std::memcpy(text.data(), input.data() + 1, size_t(text.size()) * sizeof(QChar));
    return text;
}

/// UTF-16 units of a character beyond which it counts as an attack.
constexpr qsizetype longestCharacter = 32;

/// Where the characters of `text` end, up to `most` of them.
std::vector<qsizetype> boundaries(QStringView text, size_t most) {
    std::vector<qsizetype> ends;
    CharacterFinder finder(text);
    qsizetype end = 0;
    while (ends.size() < most && (end = finder.toNextBoundary()) >= 0) {
        expect(end > (ends.empty() ? 0 : ends.back()), "characters one behind the other");
        expect(end <= text.size(), "characters within the text");
        ends.push_back(end);
    }
    return ends;
}

void expectShortened(const QString& text, size_t maximum) {
    const QString result = shortened(text, maximum);
    const QStringView whole = withoutBlanks(text);
    const qsizetype longest = std::min(longestPassage, qsizetype(maximum) * longestCharacter);
    if (whole.size() > longest) {
        expect(result.size() <= longest + 1, "no more than there is ever room for");
        expect(result.endsWith(u'…'), "an ellipsis for what was cut");
        expect(whole.startsWith(QStringView(result).chopped(1)), "the beginning of a long text");
        return;
    }
    const auto ends = boundaries(whole, maximum + 1);
    if (ends.size() <= maximum) {
        expect(result == whole, "a short text as it is");
        return;
    }
    expect(result.endsWith(u'…'), "an ellipsis for what is left out");
    const QStringView kept = QStringView(result).chopped(1);
    expect(whole.startsWith(kept), "the beginning of the text");
    // Blanks before the ellipsis are left out, too.
    qsizetype cut = kept.size();
    while (cut < whole.size() && withoutBlanks(whole.sliced(cut, 1)).isEmpty() &&
           std::ranges::find(ends, cut) == ends.end())
        ++cut;
    expect(
        kept.isEmpty() || std::ranges::find(ends, cut) != ends.end(),
        "an end between two characters");
    expect(cut <= ends[maximum - 1], "no more characters than allowed");
    if (text.isValidUtf16())
        expectWhole(result);
}

void expectPlain(const QString& text) {
    const QString line = singleLine(text);
    expectLine(line);
    expect(singleLine(line) == line, "a line that stays as it is");
    const QString lines = plainLines(text);
    expectLines(lines);
    expect(
        lines.count(u'\n') == text.count(u'\n') || text.size() > longestPassage,
        "as many lines as before");
    const QString markup = escapedForMarkup(text);
    expectLines(markup);
    expectNoMarkup(markup);
    QString unescaped = markup;
    unescaped.replace("&lt;"_L1, "<"_L1).replace("&gt;"_L1, ">"_L1).replace("&amp;"_L1, "&"_L1);
    expect(unescaped == lines, "the same text for whoever parses the markup");
}

} // namespace

void texts(QByteArrayView input) {
    const QString text = textIn(input);
    expectPlain(text);
    for (const size_t maximum : {size_t{6}, size_t{16}, size_t{48}})
        expectShortened(text, maximum);
    boundaries(text, size_t(text.size()) + 1);
    const QString title = shortTitle(singleLine(text));
    expectShortened(singleLine(text), 16);
    expectLine(singleLine(title));
}

} // namespace lumora::fuzz
