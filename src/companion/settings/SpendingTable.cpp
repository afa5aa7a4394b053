#include "companion/settings/SpendingTable.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

bool isColor(const QString& text) {
    const auto isDigit = [](QChar character) {
        return u"0123456789abcdefABCDEF"_s.contains(character);
    };
    return text.size() == 7 && text.startsWith(u'#') &&
           std::all_of(text.begin() + 1, text.end(), isDigit);
}

BucketSettings readBucket(const toml::table& source, SettingsReading& reading) {
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

} // namespace

SpendingSettings readSpending(SettingsTable& file, SettingsReading& reading) {
    const toml::table* const source = file.table("spending");
    if (!source)
        return {};
    SettingsTable table(*source, u"[spending]"_s, reading.faults);
    table.hasOneOf({"hledger", "command"});
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

} // namespace lumora::companion
