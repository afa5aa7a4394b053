#include "texts/CharacterFinder.h"

namespace lumora {

namespace {

enum class Belonging { Letters, Between, Previous };

bool isWithinPair(QStringView text, qsizetype index) {
    return index < text.size() && text[index - 1].isHighSurrogate() && text[index].isLowSurrogate();
}

char32_t codePointAt(QStringView text, qsizetype index) {
    return isWithinPair(text, index + 1) ? QChar::surrogateToUcs4(text[index], text[index + 1])
                                         : text[index].unicode();
}

/// Marks and joiners belong to whatever they stand behind, and letters that several scripts share
/// to the letters around them.
Belonging belongingOf(char32_t character) {
    const auto script = QChar::script(character);
    if (script == QChar::Script_Inherited || QChar::isMark(character))
        return Belonging::Previous;
    if (script != QChar::Script_Common)
        return Belonging::Letters;
    return QChar::isLetter(character) ? Belonging::Previous : Belonging::Between;
}

/// Where the stretch of letters, or of what is between them, ends that begins at `begin`.
qsizetype endOfStretch(QStringView text, qsizetype begin) {
    const Belonging first = belongingOf(codePointAt(text, begin));
    qsizetype end = begin;
    while (end < text.size()) {
        const char32_t character = codePointAt(text, end);
        const Belonging belonging = belongingOf(character);
        if (belonging != first && belonging != Belonging::Previous)
            break;
        end += QChar::requiresSurrogates(character) ? 2 : 1;
    }
    return end;
}

} // namespace

CharacterFinder::CharacterFinder(QStringView text)
    : m_text(text) {}

qsizetype CharacterFinder::toNextBoundary() {
    if (m_position == m_text.size())
        return -1;
    if (m_position == m_stretchEnd) {
        m_stretchBegin = m_position;
        m_stretchEnd = endOfStretch(m_text, m_position);
        m_finder = QTextBoundaryFinder(
            QTextBoundaryFinder::Grapheme, m_text.data() + m_stretchBegin,
            m_stretchEnd - m_stretchBegin);
    }
    // Nor does it keep pairs together that stand among the letters, such as rare marks.
    do {
        m_position = m_stretchBegin + m_finder.toNextBoundary();
    } while (isWithinPair(m_text, m_position));
    return m_position;
}

} // namespace lumora
