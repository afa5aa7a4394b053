#pragma once

#include "platform/Preferences.h"

#include <concepts>

namespace lumora {

/// Reads preference text as a value; absent when the text is not one.
std::optional<bool> parsePreference(const QString& text, std::type_identity<bool>);
std::optional<qint64> parsePreference(const QString& text, std::type_identity<qint64>);
std::optional<QString> parsePreference(const QString& text, std::type_identity<QString>);

/// Read-only access to one preference. A missing or malformed value reads as the default; every
/// read asks the store afresh. The store must outlive this object.
template <typename Value>
    requires std::same_as<Value, bool> || std::same_as<Value, qint64> ||
             std::same_as<Value, QString>
class AppStorageBacked {
public:
    AppStorageBacked(const Preferences& store, QString key, Value defaultValue)
        : m_store(store)
        , m_key(std::move(key))
        , m_defaultValue(std::move(defaultValue)) {}

    /// The stored value now, or the default.
    Value wrappedValue() const {
        const auto text = m_store.value(m_key);
        if (!text)
            return m_defaultValue;
        return parsePreference(*text, std::type_identity<Value>{}).value_or(m_defaultValue);
    }

private:
    const Preferences& m_store;
    QString m_key;
    Value m_defaultValue;
};

} // namespace lumora
