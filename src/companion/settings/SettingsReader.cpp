#include "companion/settings/SettingsReader.h"

#include "companion/settings/CalendarTables.h"
#include "companion/settings/CaptureTable.h"
#include "companion/settings/FocusTable.h"
#include "companion/settings/ListTables.h"
#include "companion/settings/SettingsReading.h"
#include "companion/settings/SettingsTable.h"
#include "companion/settings/SettingsText.h"
#include "companion/settings/SpendingTable.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// A token goes over the wire as it is, in a header.
bool isToken(const QString& text) {
    const auto isVisible = [](QChar c) { return c > u' ' && c < u'\x7f'; };
    return text.size() >= 16 && std::ranges::all_of(text, isVisible);
}

void readGeneral(SettingsTable& file, ServiceSettings& settings, SettingsReading& reading) {
    const QString token = file.neededText("token");
    if (!token.isEmpty() && !isToken(token))
        file.complain("token", u"must be 16 or more letters and digits without blanks"_s);
    settings.token = token.toLatin1();
    settings.port = quint16(file.number("port", 1, 65'535).value_or(settings.port));
    settings.dayEnds = std::chrono::hours(file.number("day_ends", 0, 23).value_or(0));
    settings.logPath =
        reading.path(file, "log").value_or(reading.places.dataFolder + u"/service.log"_s);
    settings.agenda.cacheFolder = reading.places.cacheFolder;
    settings.agenda.myAddresses = file.texts("my_addresses");
    settings.agenda.meetingHosts = file.texts("meeting_hosts");
    settings.agenda.refresh =
        std::chrono::minutes(file.number("refresh_minutes", 1, qint64{24} * 60)
                                 .value_or(settings.agenda.refresh.count()));
}

/// A list comes from the file or from a command.
template <typename Item>
void expectOneList(
    SettingsTable& file, const std::vector<Item>& items, const std::optional<ListCommand>& command,
    std::string_view key, const QString& other) {
    if (!items.empty() && command)
        file.complain(key, u"cannot stand beside %1"_s.arg(other));
}

ServiceSettings readFile(const toml::table& source, SettingsReading& reading) {
    SettingsTable file(source, QString(), reading.faults);
    ServiceSettings settings;
    readGeneral(file, settings, reading);
    settings.agenda.calendars = readCalendars(file, reading);
    settings.habits = readHabits(file, reading);
    settings.chores = readChores(file, reading);
    settings.habitsCommand = readListCommand(file, "habits", reading);
    settings.choresCommand = readListCommand(file, "chores", reading);
    expectOneList(file, settings.habits, settings.habitsCommand, "habits", u"[[habit]]"_s);
    expectOneList(file, settings.chores, settings.choresCommand, "chores", u"[[chore]]"_s);
    settings.capture = readCapture(file, reading);
    settings.spending = readSpending(file, reading);
    settings.focus = readFocus(file, reading);
    return settings;
}

toml::parse_result parse(QByteArrayView toml) {
    const QByteArray ascii = asciiFromToml(toml);
    try {
        return toml::parse(std::string_view(ascii.data(), size_t(ascii.size())));
    } catch (const TomlSurprise&) {
        return toml::parse_result(toml::parse_error("it cannot be read", toml::source_position()));
    }
}

} // namespace

tl::expected<ServiceSettings, QList<SettingsFault>>
readSettings(QByteArrayView toml, const SettingsPlaces& places) {
    if (const auto fault = faultOfText(toml))
        return tl::unexpected(QList<SettingsFault>{*fault});
    const toml::parse_result parsed = parse(toml);
    if (!parsed) {
        const auto& error = parsed.error();
        return tl::unexpected(QList<SettingsFault>{
            {int(error.source().begin.line),
             u"is no TOML: "_s + textFromAscii(error.description())}});
    }
    SettingsReading reading{places};
    ServiceSettings settings = readFile(parsed.table(), reading);
    if (reading.faults.isEmpty())
        return settings;
    std::ranges::stable_sort(reading.faults, {}, &SettingsFault::line);
    return tl::unexpected(reading.faults);
}

} // namespace lumora::companion
