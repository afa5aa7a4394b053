#include "linux/autostart/DesktopEntry.h"

#include <QStringView>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// What an argument may hold only between double quotes, and what needs a backslash even there.
constexpr QStringView reserved = u" \t\n\"'\\><~|&;$*?#()`";
constexpr QStringView escapedInQuotes = u"\"`$\\";

constexpr std::pair<char16_t, char16_t> valueEscapes[] = {
    {u'\\', u'\\'},
    {u'\n', u'n'},
    {u'\r', u'r'},
    {u'\t', u't'},
};

bool needsQuotes(const QString& argument) {
    return argument.isEmpty() || std::ranges::any_of(argument, [](QChar character) {
               // Other scripts have blanks of their own, which a reader takes off at either end.
               return reserved.contains(character) || character.isSpace();
           });
}

/// The first argument of `line`, which is not blank in front; empty when a quote stays open.
QString firstArgument(QStringView line) {
    if (!line.startsWith(u'"')) {
        const auto end = std::ranges::find_if(
            line, [](QChar character) { return character == u' ' || character == u'\t'; });
        return line.first(end - line.begin()).toString();
    }
    QString argument;
    for (qsizetype index = 1; index < line.size(); ++index) {
        if (line[index] == u'"')
            return argument;
        if (line[index] == u'\\' && index + 1 < line.size())
            ++index;
        argument += line[index];
    }
    return {};
}

/// A value of type string as it stands in the file, and back.
QString escapedValue(const QString& text) {
    QString value;
    for (const QChar character : text) {
        const auto* const escape = std::ranges::find(
            valueEscapes, character, [](const auto& pair) { return QChar(pair.first); });
        if (escape != std::end(valueEscapes))
            value += u'\\' + QString(QChar(escape->second));
        else
            value += character == u' ' && value.isEmpty() ? u"\\s"_s : QString(character);
    }
    return value;
}

QString unescapedValue(const QString& value) {
    QString text;
    for (qsizetype index = 0; index < value.size(); ++index) {
        if (value[index] != u'\\' || index + 1 == value.size()) {
            text += value[index];
            continue;
        }
        const QChar letter = value[++index];
        const auto* const escape = std::ranges::find(
            valueEscapes, letter, [](const auto& pair) { return QChar(pair.second); });
        if (escape != std::end(valueEscapes))
            text += QChar(escape->first);
        else if (letter == u's')
            text += u' ';
        else
            text += u'\\' + QString(letter); // no escape of this format: kept as it stands
    }
    return text;
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::parse(const QByteArray& bytes) {
    DesktopEntry entry;
    entry.m_lines.clear();
    entry.m_end = -1;
    bool inGroup = false;
    const QByteArrayList lines = bytes.trimmed().split('\n');
    for (const QByteArray& text : lines) {
        Line line{text, {}};
        const QByteArray trimmed = text.trimmed();
        if (trimmed.startsWith('['))
            inGroup = trimmed == "[Desktop Entry]";
        else if (inGroup && !trimmed.startsWith('#') && trimmed.contains('='))
            line.key = QString::fromUtf8(trimmed.first(trimmed.indexOf('=')).trimmed());
        entry.m_lines += line;
        if (inGroup && !trimmed.isEmpty())
            entry.m_end = entry.m_lines.size();
    }
    return entry.m_end < 0 ? std::nullopt : std::optional(entry);
}

std::optional<QString> DesktopEntry::value(const QString& key) const {
    const qsizetype index = indexOf(key);
    if (index < 0)
        return std::nullopt;
    const QByteArray& text = m_lines[index].text;
    return unescapedValue(QString::fromUtf8(text.mid(text.indexOf('=') + 1)).trimmed());
}

bool DesktopEntry::isTrue(const QString& key) const {
    const auto text = value(key);
    return text == u"true"_s || text == u"1"_s; // old files have numbers
}

bool DesktopEntry::isFalse(const QString& key) const {
    const auto text = value(key);
    return text == u"false"_s || text == u"0"_s;
}

void DesktopEntry::setValue(const QString& key, const QString& text) {
    const Line line{(key + u'=' + escapedValue(text)).toUtf8(), key};
    if (const qsizetype index = indexOf(key); index >= 0)
        m_lines[index] = line;
    else
        m_lines.insert(m_end++, line);
}

void DesktopEntry::remove(const QString& key) {
    for (qsizetype index = indexOf(key); index >= 0; index = indexOf(key)) {
        m_lines.removeAt(index);
        --m_end;
    }
}

QByteArray DesktopEntry::bytes() const {
    QByteArray result;
    for (const Line& line : m_lines)
        result += line.text + '\n';
    return result;
}

qsizetype DesktopEntry::indexOf(const QString& key) const {
    for (qsizetype index = m_lines.size() - 1; index >= 0; --index) {
        if (m_lines[index].key == key)
            return index;
    }
    return -1;
}

QString execLineFor(const QString& program) {
    QString argument = program;
    argument.replace(u'%', u"%%"_s); // a single one would be a field code
    if (!needsQuotes(argument))
        return argument;
    QString quoted;
    for (const QChar character : std::as_const(argument)) {
        if (escapedInQuotes.contains(character))
            quoted += u'\\';
        quoted += character;
    }
    return u'"' + quoted + u'"';
}

QString programOf(const QString& execLine) {
    QString program = firstArgument(QStringView(execLine).trimmed());
    program.replace(u"%%"_s, u"%"_s);
    return program;
}

} // namespace lumora
