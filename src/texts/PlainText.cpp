#include "texts/PlainText.h"

#include "briefing/Blanks.h"
#include "briefing/ControlCharacters.h"
#include "briefing/TextBounds.h"
#include "texts/CharacterFinder.h"

#include <QStringList>
#include <QStringView>

#include <algorithm>
#include <iterator>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr std::size_t titleCharacters = 16;
constexpr std::size_t wordBreakReach = 5; ///< characters given up at most to end on a whole word

/// UTF-16 units of a character that no writing needs: the longest flags and families take twenty.
constexpr qsizetype longestCharacter = 32;

/// The stretches of a text that are open at one place in it, the innermost last.
class OpenStretches {
public:
    /// Goes on by what stands at `index`; false when that closes nothing that is open.
    bool take(BidiControl control, qsizetype index) {
        switch (control) {
        case BidiControl::None:
            return true;
        case BidiControl::OpensEmbedding:
        case BidiControl::OpensIsolate:
            m_open.push_back({control, index});
            m_isolates += control == BidiControl::OpensIsolate ? 1 : 0;
            return true;
        case BidiControl::ClosesEmbedding:
            if (m_open.empty() || m_open.back().opening != BidiControl::OpensEmbedding)
                return false;
            m_open.pop_back();
            return true;
        case BidiControl::ClosesIsolate:
            return closeIsolate();
        }
        Q_UNREACHABLE();
    }

    /// Where those begin that are open still.
    [[nodiscard]] std::vector<qsizetype> beginnings() const {
        std::vector<qsizetype> indexes;
        indexes.reserve(m_open.size());
        for (const Stretch& stretch : m_open)
            indexes.push_back(stretch.index);
        return indexes;
    }

private:
    struct Stretch {
        BidiControl opening;
        qsizetype index;
    };

    bool closeIsolate() {
        if (m_isolates == 0)
            return false;
        while (m_open.back().opening != BidiControl::OpensIsolate)
            m_open.pop_back(); // ends with what is around it
        m_open.pop_back();
        --m_isolates;
        return true;
    }

    std::vector<Stretch> m_open;
    std::size_t m_isolates = 0;
};

/// `line` without bidirectional controls that open what they do not close, or close what they did
/// not open.
QString withoutOpenEnds(const QString& line) {
    OpenStretches open;
    std::vector<qsizetype> leftOut;
    for (qsizetype i = 0; i < line.size(); ++i)
        if (!open.take(bidiControl(line[i]), i))
            leftOut.push_back(i);
    const std::vector<qsizetype> unclosed = open.beginnings();
    if (leftOut.empty() && unclosed.empty())
        return line;
    std::vector<qsizetype> skipped;
    std::ranges::merge(leftOut, unclosed, std::back_inserter(skipped));
    QString kept;
    auto skip = skipped.cbegin();
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (skip != skipped.cend() && *skip == i)
            ++skip;
        else
            kept += line[i];
    }
    return kept;
}

QString plainLine(QString line) {
    std::replace_if(line.begin(), line.end(), isControlCharacter, u' ');
    return withoutOpenEnds(line);
}

} // namespace

QString singleLine(const QString& text) {
    return plainLine(beginning(text, longestLine));
}

QString plainLines(const QString& text) {
    QStringList lines = beginning(text, longestPassage).split(u'\n');
    for (QString& line : lines)
        line = plainLine(line);
    return lines.join(u'\n');
}

QString escapedForMarkup(const QString& text) {
    // The ampersand first, or it would catch the entities of the others.
    QString escaped = plainLines(text).replace(u'&', "&amp;"_L1);
    return escaped.replace(u'<', "&lt;"_L1).replace(u'>', "&gt;"_L1);
}

QString shortened(const QString& text, std::size_t maximum) {
    const QStringView whole = withoutBlanks(text);
    // One more than is kept, which tells whether the last character ends there.
    const qsizetype longest = std::min(longestPassage, qsizetype(maximum) * longestCharacter);
    const QStringView looked = whole.first(std::min(whole.size(), longest + 1));
    // Where each of the first characters begins, and the one after them.
    std::vector<qsizetype> begin(maximum + 1);
    CharacterFinder finder(looked);
    for (std::size_t i = 1; i < begin.size(); ++i) {
        begin[i] = finder.toNextBoundary();
        if (begin[i] < 0 || begin[i] == looked.size())
            return beginning(looked.toString(), longest);
    }
    qsizetype cut = begin.back();
    for (std::size_t i = maximum - 1; i >= maximum - wordBreakReach; --i) {
        if (looked.sliced(begin[i], begin[i + 1] - begin[i]) == u" ") {
            cut = begin[i];
            break;
        }
    }
    return withoutBlanks(looked.first(cut)).toString() + u'…';
}

QString shortTitle(const QString& title) {
    return shortened(title, titleCharacters);
}

} // namespace lumora
