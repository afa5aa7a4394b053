#include "companion/settings/SettingsText.h"

#include <QByteArray>
#include <QList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// Whether a bracket opens `line` and no name follows, which the library takes for granted.
bool isNamelessSection(QByteArray line) {
    line = line.trimmed();
    if (!line.startsWith('['))
        return false;
    const QByteArray name = line.mid(line.startsWith("[[") ? 2 : 1).trimmed();
    const auto beginsName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               QByteArrayView("_-\"'").contains(c);
    };
    return name.isEmpty() || !beginsName(name.front());
}

/// Whether something else than ASCII stands outside of quotation marks and comments, where nothing
/// may and the library relies on that.
bool hasLettersOutsideOfTexts(const QByteArray& line) {
    char quote = '\0';
    for (qsizetype index = 0; index < line.size(); ++index) {
        const char c = line[index];
        if (quote != '\0') {
            if (c == '\\' && quote == '"')
                ++index;
            else if (c == quote)
                quote = '\0';
        } else if (c == '#') {
            return false;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (uchar(c) >= 0x80) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<SettingsFault> faultOfText(QByteArrayView toml) {
    const auto isText = [](char c) { return c == '\t' || c == '\r' || uchar(c) >= 0x20; };
    int number = 0;
    for (const QByteArray& line : toml.toByteArray().split('\n')) {
        ++number;
        if (!line.isValidUtf8() || !std::ranges::all_of(line, isText))
            return SettingsFault{number, u"has bytes that are no text"_s};
        if (isNamelessSection(line))
            return SettingsFault{number, u"has a bracket without a name"_s};
        if (hasLettersOutsideOfTexts(line))
            return SettingsFault{number, u"has letters that belong into quotation marks"_s};
    }
    return std::nullopt;
}

} // namespace lumora::companion
