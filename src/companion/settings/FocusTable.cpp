#include "companion/settings/FocusTable.h"

#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

FocusSettings readFocus(SettingsTable& file, SettingsReading& reading) {
    const toml::table* const source = file.table("focus");
    if (!source)
        return {};
    SettingsTable table(*source, u"[focus]"_s, reading.faults);
    table.hasOneOf({"activitywatch", "command"});
    const auto address = table.text("activitywatch");
    const CommandLine command = reading.command(table, "command");
    const QStringList productive = table.texts("productive");
    if (!address)
        return command.isEmpty() ? FocusSettings() : FocusSettings(command);
    const QUrl url(*address, QUrl::StrictMode);
    if (url.isValid() && !url.host().isEmpty() && url.scheme().startsWith(u"http"_s))
        return ActivitySettings{url, productive};
    table.complain("activitywatch", u"must be an address such as \"http://localhost:5600\""_s);
    return {};
}

} // namespace lumora::companion
