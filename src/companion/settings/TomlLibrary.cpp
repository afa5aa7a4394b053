#include "companion/settings/TomlLibrary.h"

#include <QByteArray>

namespace lumora::companion {

namespace {

/// Stands, with two digits behind it, for a byte of a letter beyond ASCII, and for itself.
constexpr char mark = '~';

QByteArray everyAsciiCharacter() {
    QByteArray characters;
    for (int c = 0; c < 0x80; ++c)
        characters += char(c);
    return characters;
}

} // namespace

QByteArray asciiFromToml(QByteArrayView toml) {
    return toml.toByteArray().toPercentEncoding(everyAsciiCharacter(), {}, mark);
}

QString textFromAscii(std::string_view ascii) {
    const QByteArray bytes(ascii.data(), qsizetype(ascii.size()));
    return QString::fromUtf8(QByteArray::fromPercentEncoding(bytes, mark));
}

} // namespace lumora::companion
