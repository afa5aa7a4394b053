#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace lumora {

/// The text of a desktop entry file, kept line by line, so that a change of one key leaves every
/// other byte of the file (comments, translations, other groups, unknown keys) as it was. Keys are
/// those of the group [Desktop Entry]; of a key that is there twice, the last one holds.
class DesktopEntry {
public:
    /// An entry without any key.
    DesktopEntry() = default;

    /// Reads a file's bytes; absent when they hold no group [Desktop Entry].
    [[nodiscard]] static std::optional<DesktopEntry> parse(const QByteArray& bytes);

    /// The key's text with its escapes resolved; absent when it is not set.
    [[nodiscard]] std::optional<QString> value(const QString& key) const;

    /// Whether the key is set and reads "true", or "false" for `isFalse`.
    bool isTrue(const QString& key) const;
    bool isFalse(const QString& key) const;

    /// Sets the key, in the place where it was.
    void setValue(const QString& key, const QString& text);

    void remove(const QString& key);

    /// The file's bytes.
    QByteArray bytes() const;

private:
    struct Line {
        QByteArray text; ///< as it stands in the file, without its line break
        QString key;     ///< empty unless a key of [Desktop Entry]
    };

    /// The line that holds the key's value; -1 when there is none.
    qsizetype indexOf(const QString& key) const;

    QList<Line> m_lines{{"[Desktop Entry]", {}}};
    qsizetype m_end = 1; ///< behind the last line of the group that is not blank
};

/// The value of a desktop entry's "Exec" that starts `program`, quoted so that every character of
/// its path arrives.
[[nodiscard]] QString execLineFor(const QString& program);

/// The program that a desktop entry's "Exec" starts, as it is named there; empty when the line
/// names none or its quotes do not match.
[[nodiscard]] QString programOf(const QString& execLine);

} // namespace lumora
