#include "companion/settings/SettingsReading.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

std::optional<QString> SettingsReading::path(SettingsTable& table, std::string_view key) const {
    const auto text = table.text(key);
    if (!text)
        return std::nullopt;
    if (*text == u"~" || text->startsWith(u"~/"))
        return QDir::cleanPath(places.home + text->sliced(1));
    if (QDir::isAbsolutePath(*text))
        return QDir::cleanPath(*text);
    table.complain(key, u"must be a path that begins with / or ~/"_s);
    return std::nullopt;
}

CommandLine SettingsReading::command(SettingsTable& table, std::string_view key) const {
    CommandLine command = table.texts(key);
    if (!command.isEmpty() && command.first().startsWith(u"~/"))
        command.first() = places.home + command.first().sliced(1);
    return command;
}

} // namespace lumora::companion
