#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace lumora {

/// The text of an INI file, kept line by line, so that a change of one key leaves every other byte
/// of the file (comments, order, unknown keys and groups, line endings) as it was.
///
/// Keys are read from and written to the group [General]; keys before any group header count as
/// its own. Of a key that is there twice, the last one holds. Lines that begin with "#" or ";" are
/// comments.
class IniDocument {
public:
    /// An empty document.
    IniDocument() = default;

    /// Reads a file's bytes; absent when they are no INI file: not UTF-8, or with a line that is
    /// neither blank, comment, header nor "key=value".
    [[nodiscard]] static std::optional<IniDocument> parse(const QByteArray& bytes);

    /// The key's text; absent when it is not set. A value in double quotes is read without them.
    [[nodiscard]] std::optional<QString> value(const QString& key) const;

    /// Sets the key. `key` must hold none of the characters "=[]#;" and no line break.
    void setValue(const QString& key, const QString& text);

    /// The file's bytes: what was read, but for the keys that were set.
    QByteArray bytes() const;

private:
    struct Line {
        QByteArray text;       ///< as it stands in the file, with its line break
        QString key;           ///< empty unless a key of [General]
        bool inGeneral = true; ///< in the group [General], its header included
    };

    qsizetype indexOf(const QString& key) const;
    void insert(Line line);
    QByteArray lineBreak() const;

    QList<Line> m_lines;
    bool m_hasByteOrderMark = false;
};

} // namespace lumora
