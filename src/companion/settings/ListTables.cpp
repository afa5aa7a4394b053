#include "companion/settings/ListTables.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr qint64 longestInterval = qint64{10} * 366; // days

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

HabitSettings readHabit(
    const toml::table& source, const std::vector<HabitSettings>& before, SettingsReading& reading) {
    SettingsTable table(source, u"[[habit]]"_s, reading.faults);
    HabitSettings habit;
    habit.id = readId(table, before);
    habit.name = table.text("name").value_or(habit.id);
    habit.target = table.number("target", 1, 1000).value_or(habit.target);
    return habit;
}

ChoreSettings readChore(
    const toml::table& source, const std::vector<ChoreSettings>& before, SettingsReading& reading) {
    SettingsTable table(source, u"[[chore]]"_s, reading.faults);
    ChoreSettings chore;
    chore.id = readId(table, before);
    chore.name = table.text("name").value_or(chore.id);
    chore.room = table.text("room").value_or(QString());
    if (!table.has("days"))
        table.complain("days", u"is missing"_s);
    chore.days = table.number("days", 1, longestInterval).value_or(chore.days);
    return chore;
}

/// Reads the tables [[key]], each with what stands before it.
template <typename Item>
std::vector<Item> readItems(
    SettingsTable& file, std::string_view key,
    Item (*readItem)(const toml::table&, const std::vector<Item>&, SettingsReading&),
    SettingsReading& reading) {
    std::vector<Item> items;
    for (const toml::table* const table : file.tables(key))
        items.push_back(readItem(*table, items, reading));
    return items;
}

} // namespace

std::vector<HabitSettings> readHabits(SettingsTable& file, SettingsReading& reading) {
    return readItems(file, "habit", readHabit, reading);
}

std::vector<ChoreSettings> readChores(SettingsTable& file, SettingsReading& reading) {
    return readItems(file, "chore", readChore, reading);
}

std::optional<ListCommand>
readListCommand(SettingsTable& file, std::string_view key, SettingsReading& reading) {
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

} // namespace lumora::companion
