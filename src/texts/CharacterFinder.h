#pragma once

#include <QStringView>
#include <QTextBoundaryFinder>

namespace lumora {

/// Where the characters of a text end, as its readers count them, one after the other.
///
/// The toolkit knows, but for texts in scripts that it has rules of its own for, Thai and
/// Devanagari among them: it applies those rules to the pictures and signs between the letters too,
/// and finds an end within each. So it is asked about letters and about what stands between them
/// separately.
class CharacterFinder {
public:
    /// `text` has to live as long as this.
    explicit CharacterFinder(QStringView text);

    /// Where the next character ends; -1 when there is none.
    qsizetype toNextBoundary();

private:
    QStringView m_text;
    qsizetype m_position = 0;
    qsizetype m_stretchBegin = 0;
    qsizetype m_stretchEnd = 0;
    QTextBoundaryFinder m_finder; ///< of the stretch
};

} // namespace lumora
