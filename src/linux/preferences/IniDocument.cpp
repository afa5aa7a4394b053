#include "linux/preferences/IniDocument.h"

#include <QStringDecoder>
#include <QStringView>

#include <algorithm>
#include <ranges>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";

bool isText(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(bytes);
    return !decoder.hasError() && !decoded.contains(QChar(u'\0'));
}

bool isComment(const QByteArray& trimmed) {
    return trimmed.isEmpty() || trimmed.startsWith('#') || trimmed.startsWith(';');
}

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

/// The text that `value` stands for. Surrounding double quotes are dropped; \\ \" \n \r \t \s (a
/// space) and \x with hexadecimal digits are resolved, any other backslash stands for itself.
QString unescaped(const QString& value) {
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

/// The value, on one line, that `unescaped` reads as `text`.
QString escaped(const QString& text) {
    // Blanks at either end and leading quotes would not survive a reader.
    const bool quoted = text.trimmed() != text || text.startsWith(u'"');
    QString value;
    for (const QChar character : text)
        value += escapeCharacter(character, quoted);
    return quoted ? u'"' + value + u'"' : value;
}

} // namespace

std::optional<IniDocument> IniDocument::parse(const QByteArray& bytes) {
    IniDocument document;
    document.m_hasByteOrderMark = bytes.startsWith(byteOrderMark);
    const QByteArray content = bytes.mid(document.m_hasByteOrderMark ? byteOrderMark.size() : 0);
    if (!isText(content))
        return std::nullopt;

    bool inGeneral = true;
    for (qsizetype begin = 0; begin < content.size();) {
        const qsizetype lineFeed = content.indexOf('\n', begin);
        const qsizetype end = lineFeed < 0 ? content.size() : lineFeed + 1;
        Line line{content.mid(begin, end - begin), {}, inGeneral};
        begin = end;

        const QByteArray trimmed = line.text.trimmed();
        const qsizetype equals = trimmed.indexOf('=');
        if (trimmed.startsWith('[') && trimmed.endsWith(']')) {
            inGeneral = trimmed == "[General]";
            line.inGeneral = inGeneral;
        } else if (!isComment(trimmed) && equals > 0) {
            if (inGeneral)
                line.key = QString::fromUtf8(trimmed.first(equals).trimmed());
        } else if (!isComment(trimmed)) {
            return std::nullopt;
        }
        document.m_lines += line;
    }
    return document;
}

std::optional<QString> IniDocument::value(const QString& key) const {
    const qsizetype index = indexOf(key);
    if (index < 0)
        return std::nullopt;
    const QByteArray& text = m_lines[index].text;
    return unescaped(QString::fromUtf8(text.mid(text.indexOf('=') + 1)).trimmed());
}

void IniDocument::setValue(const QString& key, const QString& text) {
    const QByteArray assignment = (key + u'=' + escaped(text)).toUtf8() + lineBreak();
    if (const qsizetype index = indexOf(key); index >= 0)
        m_lines[index].text = assignment;
    else
        insert({assignment, key, true});
}

QByteArray IniDocument::bytes() const {
    QByteArray result = m_hasByteOrderMark ? byteOrderMark.toByteArray() : QByteArray();
    for (const Line& line : m_lines)
        result += line.text;
    return result;
}

qsizetype IniDocument::indexOf(const QString& key) const {
    for (qsizetype index = m_lines.size() - 1; index >= 0; --index) {
        if (!key.isEmpty() && m_lines[index].key == key)
            return index;
    }
    return -1;
}

void IniDocument::insert(Line line) {
    // The blank lines and comments that end a group usually belong to the next one.
    const auto isAnchor = [](const Line& candidate) {
        return !candidate.key.isEmpty() ||
               (candidate.inGeneral && candidate.text.trimmed().startsWith('['));
    };
    const auto anchor = std::ranges::find_if(m_lines | std::views::reverse, isAnchor);
    qsizetype position = anchor.base() - m_lines.begin();

    if (position == 0) {
        position = m_lines.size();
        m_lines.append({"[General]" + lineBreak(), {}, true});
        ++position;
    }
    for (Line& earlier : m_lines) {
        if (!earlier.text.endsWith('\n'))
            earlier.text += lineBreak();
    }
    m_lines.insert(position, std::move(line));
}

QByteArray IniDocument::lineBreak() const {
    return !m_lines.isEmpty() && m_lines.first().text.endsWith("\r\n") ? "\r\n"_ba : "\n"_ba;
}

} // namespace lumora
