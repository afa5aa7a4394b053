#include "linux/preferences/IniDocument.h"

#include "linux/preferences/IniValue.h"

#include <QStringDecoder>

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
    return unescapeIniValue(QString::fromUtf8(text.mid(text.indexOf('=') + 1)).trimmed());
}

void IniDocument::setValue(const QString& key, const QString& text) {
    const QByteArray assignment = (key + u'=' + escapeIniValue(text)).toUtf8() + lineBreak();
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
