#pragma once

#include "companion/settings/SettingsFault.h"
#include "companion/settings/TomlLibrary.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::companion {

/// One table of the configuration, from which keys are taken one by one. Whatever is wrong with a
/// key becomes a fault, and so does, when the table goes, each key that nobody took.
class SettingsTable {
public:
    /// The table and the faults must outlive this. `name` is what people call it: "[[habit]]";
    /// empty for the whole file.
    SettingsTable(const toml::table& table, QString name, QList<SettingsFault>& faults);
    ~SettingsTable();
    SettingsTable(const SettingsTable&) = delete;
    SettingsTable& operator=(const SettingsTable&) = delete;

    [[nodiscard]] bool has(std::string_view key) const;

    /// Whether exactly one of the keys is there; complains otherwise.
    bool hasOneOf(std::initializer_list<std::string_view> keys);

    /// A text of one line with something in it; absent when there is none.
    std::optional<QString> text(std::string_view key);

    /// The same, of which there has to be one.
    QString neededText(std::string_view key);

    /// A whole number from `least` to `most`; absent when there is none.
    std::optional<qint64> number(std::string_view key, qint64 least, qint64 most);

    std::optional<bool> flag(std::string_view key);

    /// A list of texts; empty when there is none.
    QStringList texts(std::string_view key);

    /// The table [key]; null when there is none.
    const toml::table* table(std::string_view key);

    /// The tables [[key]], in their order.
    std::vector<const toml::table*> tables(std::string_view key);

    /// Complains of the key, in words that follow its name: "must be …".
    void complain(std::string_view key, const QString& what);

    /// Complains of the table as a whole.
    void complain(const QString& what);

private:
    const toml::node* take(std::string_view key);
    std::optional<QString> textOf(const toml::node& node, std::string_view key);

    const toml::table& m_table;
    const QString m_name;
    QList<SettingsFault>& m_faults;
    std::set<std::string, std::less<>> m_taken;
};

} // namespace lumora::companion
