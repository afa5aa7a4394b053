#pragma once

#include "platform/PreferenceKeys.h"
#include "platform/Preferences.h"

#include <type_traits>

namespace lumora {

/// Reads a preference's text as a value; absent when the text is not one.
std::optional<bool> parsePreference(const QString& text, std::type_identity<bool>);
std::optional<qint64> parsePreference(const QString& text, std::type_identity<qint64>);
std::optional<QString> parsePreference(const QString& text, std::type_identity<QString>);

/// The text that a value is stored as.
QString preferenceText(bool value);
QString preferenceText(qint64 value);
QString preferenceText(const QString& value);

/// Read-only access to one preference. A missing or malformed value reads as the key's default;
/// every read asks the store afresh. The store must outlive this object.
template <typename Value>
class AppStorageBacked {
public:
    AppStorageBacked(const Preferences& store, PreferenceKey<Value> key)
        : m_store(store)
        , m_key(std::move(key)) {}

    /// The stored value now, or the default.
    Value wrappedValue() const {
        const auto text = m_store.value(m_key.name);
        if (!text)
            return m_key.defaultValue;
        return parsePreference(*text, std::type_identity<Value>{}).value_or(m_key.defaultValue);
    }

private:
    const Preferences& m_store;
    PreferenceKey<Value> m_key;
};

/// Has `value` hold under `key`, see `Preferences::setValue`.
template <typename Value>
[[nodiscard]] tl::expected<void, QString> storePreference(
    Preferences& store, const PreferenceKey<Value>& key, const std::type_identity_t<Value>& value) {
    return store.setValue(key.name, preferenceText(value));
}

} // namespace lumora
