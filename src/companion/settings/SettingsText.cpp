#include "companion/settings/SettingsText.h"

#include <QByteArray>
#include <QList>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// Whether something else than ASCII stands outside of texts and comments: a name that nobody put
/// into quotation marks, most likely.
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
    int number = 0;
    for (const QByteArray& line : toml.toByteArray().split('\n')) {
        ++number;
        if (!line.isValidUtf8())
            return SettingsFault{number, u"has bytes that are no text"_s};
        if (hasLettersOutsideOfTexts(line))
            return SettingsFault{number, u"has letters that belong into quotation marks"_s};
    }
    return std::nullopt;
}

} // namespace lumora::companion
