#include "platform/memory/MemoryPreferences.h"

namespace lumora {

std::optional<QString> MemoryPreferences::value(const QString& key) const {
    const auto found = m_values.constFind(key);
    return found == m_values.cend() ? std::nullopt : std::optional(*found);
}

tl::expected<void, QString> MemoryPreferences::setValue(const QString& key, const QString& text) {
    if (value(key) == text)
        return {};
    m_values.insert(key, text);
    Q_EMIT changed();
    return {};
}

} // namespace lumora
