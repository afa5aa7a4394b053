#include "companion/settings/SettingsReader.h"

#include "companion/fetching/Web.h"
#include "companion/settings/SettingsTable.h"
#include "companion/settings/SettingsText.h"

#include <QDir>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr qint64 longestInterval = qint64{10} * 366; // days

/// What the readers of the single tables share.
struct Reading {
    const SettingsPlaces& places;
    QList<SettingsFault> faults;

    /// The path that the key holds; absent when there is none, or it is relative.
    std::optional<QString> path(SettingsTable& table, std::string_view key) {
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

    /// The command that the key holds; empty when there is none.
    CommandLine command(SettingsTable& table, std::string_view key) {
        CommandLine command = table.texts(key);
        if (!command.isEmpty() && command.first().startsWith(u"~/"))
            command.first() = places.home + command.first().sliced(1);
        return command;
    }
};

/// Complains unless exactly one of the keys is there.
bool hasOneOf(SettingsTable& table, std::initializer_list<std::string_view> keys) {
    const auto present =
        std::ranges::count_if(keys, [&](std::string_view key) { return table.has(key); });
    if (present == 1)
        return true;
    QStringList names;
    for (const std::string_view key : keys)
        names += QString::fromLatin1(key.data(), qsizetype(key.size()));
    const QString last = names.takeLast();
    table.complain(u"needs exactly one of %1 and %2"_s.arg(names.join(u", "_s), last));
    return false;
}

std::optional<CalendarPlace> readPlace(SettingsTable& table, Reading& reading) {
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

void readCalendar(const toml::table& source, ServiceSettings& settings, Reading& reading) {
    SettingsTable table(source, u"[[calendar]]"_s, reading.faults);
    CalendarSettings calendar;
    if (!table.has("gnome"))
        calendar.name = table.neededText("name");
    else
        calendar.name = table.text("name").value_or(u"GNOME"_s);
    // By their names people and the report of the check tell them apart.
    const auto& before = settings.agenda.calendars;
    if (std::ranges::find(before, calendar.name, &CalendarSettings::name) != before.end())
        table.complain("name", u"is the name of another one too"_s);
    calendar.showTransparent = table.flag("transparent").value_or(false);
    // Each is taken, so that of several none counts as unknown.
    const bool isOne = hasOneOf(table, {"url", "file", "dir", "gnome"});
    auto place = readPlace(table, reading);
    for (const std::string_view key : {"url", "file", "dir"}) {
        if (!isOne && table.has(key))
            table.text(key);
    }
    if (!place)
        return;
    calendar.place = *std::move(place);
    settings.agenda.calendars.push_back(std::move(calendar));
}

template <typename Item>
bool isTaken(const std::vector<Item>& items, const QString& id) {
    return std::ranges::find(items, id, &Item::id) != items.end();
}

/// The id of a new item, which no other has.
template <typename Item>
QString readId(SettingsTable& table, const std::vector<Item>& before) {
    const QString id = table.neededText("id");
    if (!id.isEmpty() && isTaken(before, id))
        table.complain("id", u"is the id of another one too"_s);
    return id;
}

void readHabit(const toml::table& source, ServiceSettings& settings, Reading& reading) {
    SettingsTable table(source, u"[[habit]]"_s, reading.faults);
    HabitSettings habit;
    habit.id = readId(table, settings.habits);
    habit.name = table.text("name").value_or(habit.id);
    habit.target = table.number("target", 1, 1000).value_or(habit.target);
    settings.habits.push_back(std::move(habit));
}

void readChore(const toml::table& source, ServiceSettings& settings, Reading& reading) {
    SettingsTable table(source, u"[[chore]]"_s, reading.faults);
    ChoreSettings chore;
    chore.id = readId(table, settings.chores);
    chore.name = table.text("name").value_or(chore.id);
    chore.room = table.text("room").value_or(QString());
    if (!table.has("days"))
        table.complain("days", u"is missing"_s);
    chore.days = table.number("days", 1, longestInterval).value_or(chore.days);
    settings.chores.push_back(std::move(chore));
}

std::optional<ListCommand>
readListCommand(SettingsTable& file, std::string_view key, Reading& reading) {
    const toml::table* const source = file.table(key);
    if (!source)
        return std::nullopt;
    const QString name = QString::fromLatin1(key.data(), qsizetype(key.size()));
    SettingsTable table(*source, u'[' + name + u']', reading.faults);
    ListCommand list;
    list.print = reading.command(table, "command");
    if (!table.has("command"))
        table.complain("command", u"is missing"_s);
    list.act = reading.command(table, "act");
    return list;
}

std::optional<CaptureFormat> readFormat(SettingsTable& table) {
    static const std::array<std::pair<QString, CaptureFormat>, 4> formats{{
        {u"markdown"_s, CaptureFormat::Markdown},
        {u"todo.txt"_s, CaptureFormat::TodoTxt},
        {u"org"_s, CaptureFormat::Org},
        {u"plain"_s, CaptureFormat::Plain},
    }};
    const auto text = table.text("format");
    if (!text)
        return std::nullopt;
    for (const auto& [name, format] : formats) {
        if (*text == name)
            return format;
    }
    table.complain("format", u"must be \"markdown\", \"todo.txt\", \"org\" or \"plain\""_s);
    return std::nullopt;
}

CaptureFormat formatFor(const QString& path) {
    if (path.endsWith(u".org"_s))
        return CaptureFormat::Org;
    if (path.endsWith(u"todo.txt"_s))
        return CaptureFormat::TodoTxt;
    return path.endsWith(u".md"_s) ? CaptureFormat::Markdown : CaptureFormat::Plain;
}

CaptureSettings readCapture(SettingsTable& file, Reading& reading) {
    const toml::table* const source = file.table("capture");
    if (!source)
        return {};
    SettingsTable table(*source, u"[capture]"_s, reading.faults);
    hasOneOf(table, {"file", "command"});
    const auto path = reading.path(table, "file");
    const CommandLine command = reading.command(table, "command");
    const auto format = readFormat(table);
    if (!path)
        return command.isEmpty() ? CaptureSettings() : CaptureSettings(command);
    return CaptureFile{*path, format.value_or(formatFor(*path))};
}

bool isColor(const QString& text) {
    const auto isDigit = [](QChar character) {
        return u"0123456789abcdefABCDEF"_s.contains(character);
    };
    return text.size() == 7 && text.startsWith(u'#') &&
           std::all_of(text.begin() + 1, text.end(), isDigit);
}

BucketSettings readBucket(const toml::table& source, Reading& reading) {
    SettingsTable table(source, u"[[spending.bucket]]"_s, reading.faults);
    BucketSettings bucket;
    bucket.account = table.neededText("account");
    bucket.label = table.text("label").value_or(QString());
    bucket.icon = table.text("icon").value_or(QString());
    bucket.color = table.text("color").value_or(QString());
    if (!bucket.color.isEmpty() && !isColor(bucket.color))
        table.complain("color", u"must be a colour such as \"#1E90FF\""_s);
    return bucket;
}

SpendingSettings readSpending(SettingsTable& file, Reading& reading) {
    const toml::table* const source = file.table("spending");
    if (!source)
        return {};
    SettingsTable table(*source, u"[spending]"_s, reading.faults);
    hasOneOf(table, {"hledger", "command"});
    JournalSettings journal;
    const auto path = reading.path(table, "hledger");
    const CommandLine command = reading.command(table, "command");
    journal.currency = table.text("currency").value_or(QString());
    for (const toml::table* bucket : table.tables("bucket"))
        journal.buckets.push_back(readBucket(*bucket, reading));
    if (!path)
        return command.isEmpty() ? SpendingSettings() : SpendingSettings(command);
    journal.path = *path;
    return journal;
}

FocusSettings readFocus(SettingsTable& file, Reading& reading) {
    const toml::table* const source = file.table("focus");
    if (!source)
        return {};
    SettingsTable table(*source, u"[focus]"_s, reading.faults);
    hasOneOf(table, {"activitywatch", "command"});
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

/// A token goes over the wire as it is, in a header.
bool isToken(const QString& text) {
    const auto isVisible = [](QChar c) { return c > u' ' && c < u'\x7f'; };
    return text.size() >= 16 && std::ranges::all_of(text, isVisible);
}

void readGeneral(SettingsTable& file, ServiceSettings& settings, Reading& reading) {
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

ServiceSettings readFile(const toml::table& source, Reading& reading) {
    SettingsTable file(source, QString(), reading.faults);
    ServiceSettings settings;
    readGeneral(file, settings, reading);
    for (const toml::table* table : file.tables("calendar"))
        readCalendar(*table, settings, reading);
    for (const toml::table* table : file.tables("habit"))
        readHabit(*table, settings, reading);
    for (const toml::table* table : file.tables("chore"))
        readChore(*table, settings, reading);
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
    Reading reading{places, {}};
    ServiceSettings settings = readFile(parsed.table(), reading);
    if (reading.faults.isEmpty())
        return settings;
    std::ranges::stable_sort(reading.faults, {}, &SettingsFault::line);
    return tl::unexpected(reading.faults);
}

} // namespace lumora::companion
