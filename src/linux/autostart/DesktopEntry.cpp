#include "linux/autostart/DesktopEntry.h"

#include "linux/autostart/ExecLine.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

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
    return unescapeEntryValue(QString::fromUtf8(text.mid(text.indexOf('=') + 1)).trimmed());
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
    const Line line{(key + u'=' + escapeEntryValue(text)).toUtf8(), key};
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

} // namespace lumora
