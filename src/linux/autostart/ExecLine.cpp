#include "linux/autostart/ExecLine.h"

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
               return reserved.contains(character);
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

} // namespace

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

QString escapeEntryValue(const QString& text) {
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

QString unescapeEntryValue(const QString& value) {
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

} // namespace lumora
