#include "companion/settings/CalendarTables.h"

#include "companion/fetching/Web.h"

#include <QUrl>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

std::optional<CalendarPlace> readPlace(SettingsTable& table, SettingsReading& reading) {
    if (table.has("url")) {
        const auto text = table.text("url");
        const QUrl url(text.value_or(QString()), QUrl::StrictMode);
        if (text && fetchableUrl(url))
            return IcsAddress{url};
        if (text)
            table.complain("url", u"must be an address that begins with https:// or webcal://"_s);
        return std::nullopt;
    }
    if (table.has("gnome")) {
        const auto flag = table.flag("gnome");
        if (flag == std::optional(false))
            table.complain("gnome", u"must be true, or not be there"_s);
        return GnomeCalendars{};
    }
    if (table.has("file")) {
        const auto path = reading.path(table, "file");
        return path ? std::optional<CalendarPlace>(IcsFile{*path}) : std::nullopt;
    }
    const auto path = reading.path(table, "dir");
    return path ? std::optional<CalendarPlace>(IcsFolder{*path}) : std::nullopt;
}

void readCalendar(
    const toml::table& source, std::vector<CalendarSettings>& calendars, SettingsReading& reading) {
    SettingsTable table(source, u"[[calendar]]"_s, reading.faults);
    CalendarSettings calendar;
    if (!table.has("gnome"))
        calendar.name = table.neededText("name");
    else
        calendar.name = table.text("name").value_or(u"GNOME"_s);
    // By their names people and the report of the check tell them apart.
    if (std::ranges::find(calendars, calendar.name, &CalendarSettings::name) != calendars.end())
        table.complain("name", u"is the name of another one too"_s);
    calendar.showTransparent = table.flag("transparent").value_or(false);
    // Each is taken, so that of several none counts as unknown.
    const bool isOne = table.hasOneOf({"url", "file", "dir", "gnome"});
    auto place = readPlace(table, reading);
    for (const std::string_view key : {"url", "file", "dir"}) {
        if (!isOne && table.has(key))
            table.text(key);
    }
    if (!place)
        return;
    calendar.place = *std::move(place);
    calendars.push_back(std::move(calendar));
}

} // namespace

std::vector<CalendarSettings> readCalendars(SettingsTable& file, SettingsReading& reading) {
    std::vector<CalendarSettings> calendars;
    for (const toml::table* const table : file.tables("calendar"))
        readCalendar(*table, calendars, reading);
    return calendars;
}

} // namespace lumora::companion
