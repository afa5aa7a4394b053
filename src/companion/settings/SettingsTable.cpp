#include "companion/settings/SettingsTable.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

bool isControl(QChar character) {
    return character.category() == QChar::Other_Control;
}

} // namespace

QString SettingsFault::text() const {
    return line > 0 ? u"line %1: "_s.arg(line) + message : message;
}

SettingsTable::SettingsTable(const toml::table& table, QString name, QList<SettingsFault>& faults)
    : m_table(table)
    , m_name(std::move(name))
    , m_faults(faults) {}

SettingsTable::~SettingsTable() {
    for (const auto& [key, value] : m_table) {
        if (!m_taken.contains(key.str()))
            complain(key.str(), u"is not known here"_s);
    }
}

bool SettingsTable::has(std::string_view key) const {
    return m_table.contains(key);
}

bool SettingsTable::hasOneOf(std::initializer_list<std::string_view> keys) {
    const auto present =
        std::ranges::count_if(keys, [this](std::string_view key) { return has(key); });
    if (present == 1)
        return true;
    QStringList names;
    for (const std::string_view key : keys)
        names += QString::fromLatin1(key.data(), qsizetype(key.size()));
    const QString last = names.takeLast();
    complain(u"needs exactly one of %1 and %2"_s.arg(names.join(u", "_s), last));
    return false;
}

std::optional<QString> SettingsTable::text(std::string_view key) {
    const toml::node* const node = take(key);
    return node ? textOf(*node, key) : std::nullopt;
}

QString SettingsTable::neededText(std::string_view key) {
    if (!has(key))
        complain(key, u"is missing"_s);
    return text(key).value_or(QString());
}

std::optional<qint64> SettingsTable::number(std::string_view key, qint64 least, qint64 most) {
    const toml::node* const node = take(key);
    if (!node)
        return std::nullopt;
    const auto value = node->value_exact<int64_t>();
    if (value && *value >= least && *value <= most)
        return *value;
    complain(key, u"must be a whole number from %1 to %2"_s.arg(least).arg(most));
    return std::nullopt;
}

std::optional<bool> SettingsTable::flag(std::string_view key) {
    const toml::node* const node = take(key);
    if (!node)
        return std::nullopt;
    const auto value = node->value_exact<bool>();
    if (!value)
        complain(key, u"must be true or false"_s);
    return value;
}

QStringList SettingsTable::texts(std::string_view key) {
    QStringList result;
    const toml::node* const node = take(key);
    if (!node)
        return result;
    const toml::array* const array = node->as_array();
    if (!array || array->empty()) {
        complain(key, u"must be a list of texts, such as [\"a\", \"b\"]"_s);
        return result;
    }
    for (const toml::node& item : *array) {
        const auto text = textOf(item, key);
        if (!text)
            return {};
        result += *text;
    }
    return result;
}

const toml::table* SettingsTable::table(std::string_view key) {
    const toml::node* const node = take(key);
    if (node && !node->is_table())
        complain(key, u"must be a table, written [%1]"_s.arg(textFromAscii(key)));
    return node ? node->as_table() : nullptr;
}

std::vector<const toml::table*> SettingsTable::tables(std::string_view key) {
    std::vector<const toml::table*> result;
    const toml::node* const node = take(key);
    if (!node)
        return result;
    const toml::array* const array = node->as_array();
    const bool isOfTables = array && std::ranges::all_of(*array, [](const toml::node& item) {
                                return item.is_table();
                            });
    if (!isOfTables) {
        complain(key, u"must be tables, each written [[%1]]"_s.arg(textFromAscii(key)));
        return result;
    }
    for (const toml::node& item : *array)
        result.push_back(item.as_table());
    return result;
}

void SettingsTable::complain(std::string_view key, const QString& what) {
    const toml::node* const node = m_table.get(key);
    const auto& source = node ? node->source() : m_table.source();
    const QString place = m_name.isEmpty() ? QString() : m_name + u' ';
    m_faults += {int(source.begin.line), place + textFromAscii(key) + u": "_s + what};
}

void SettingsTable::complain(const QString& what) {
    m_faults += {int(m_table.source().begin.line), m_name + u": "_s + what};
}

const toml::node* SettingsTable::take(std::string_view key) {
    m_taken.emplace(key);
    return m_table.get(key);
}

std::optional<QString> SettingsTable::textOf(const toml::node& node, std::string_view key) {
    const auto value = node.value_exact<std::string>();
    QString text = value ? textFromAscii(*value) : QString();
    if (!value)
        complain(key, u"must be a text in quotation marks"_s);
    else if (text.trimmed().isEmpty())
        complain(key, u"must not be empty"_s);
    else if (std::ranges::any_of(text, isControl))
        complain(key, u"must be one line without control characters"_s);
    else
        return text;
    return std::nullopt;
}

} // namespace lumora::companion
