#include "linux/preferences/IniValue.h"

#include <QStringView>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

bool isQuoted(QStringView value) {
    return value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"');
}

/// The characters that one-letter escapes stand for, and the letters.
constexpr std::pair<char16_t, char16_t> shortEscapes[] = {
    {u'\\', u'\\'}, {u'"', u'"'}, {u'\n', u'n'}, {u'\r', u'r'}, {u'\t', u't'}, {u' ', u's'},
};

/// Resolves the escape whose backslash was just read; takes what it used off `rest`.
QChar resolveEscape(QStringView& rest) {
    if (rest.isEmpty())
        return u'\\';
    for (const auto& [character, letter] : shortEscapes) {
        if (rest.front() == letter) {
            rest = rest.sliced(1);
            return character;
        }
    }
    const auto isHexadecimal = [](QChar digit) {
        return digit.isDigit() || (digit.toLower() >= u'a' && digit.toLower() <= u'f');
    };
    qsizetype digits = 0;
    while (rest.front() == u'x' && digits < 4 && digits + 1 < rest.size() &&
           isHexadecimal(rest[digits + 1]))
        ++digits;
    if (digits == 0)
        return u'\\';
    const ushort code = rest.sliced(1, digits).toUShort(nullptr, 16);
    rest = rest.sliced(1 + digits);
    return QChar(code);
}

QString escapeCharacter(QChar character, bool quoted) {
    if (character == u' ' || (character == u'"' && !quoted))
        return character;
    for (const auto& [plain, letter] : shortEscapes) {
        if (character == plain)
            return QString(u'\\') + QChar(letter);
    }
    if (character.category() == QChar::Other_Control)
        return u"\\x%1"_s.arg(character.unicode(), 4, 16, QChar(u'0'));
    return character;
}

} // namespace

QString unescapeIniValue(const QString& value) {
    QStringView rest = value;
    if (isQuoted(rest))
        rest = rest.sliced(1, rest.size() - 2);
    QString text;
    while (!rest.isEmpty()) {
        const QChar next = rest.front();
        rest = rest.sliced(1);
        text += next == u'\\' ? resolveEscape(rest) : next;
    }
    return text;
}

QString escapeIniValue(const QString& text) {
    // Blanks at either end and leading quotes would not survive a reader.
    const bool quoted = text.trimmed() != text || text.startsWith(u'"');
    QString value;
    for (const QChar character : text)
        value += escapeCharacter(character, quoted);
    return quoted ? u'"' + value + u'"' : value;
}

} // namespace lumora
