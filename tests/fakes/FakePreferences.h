#pragma once

#include "platform/Preferences.h"

#include <QHash>
#include <QSet>

namespace lumora::tests {

/// Preferences in memory that the test may keep from being stored.
class FakePreferences final : public Preferences {
public:
    /// Has `text` hold, as if it were stored already.
    void set(const QString& key, const QString& text) {
        const auto before = value(key);
        m_values.insert(key, text);
        if (before != text)
            Q_EMIT changed();
    }

    [[nodiscard]] std::optional<QString> value(const QString& key) const override {
        const auto found = m_values.constFind(key);
        return found == m_values.cend() ? std::nullopt : std::optional(*found);
    }

    [[nodiscard]] tl::expected<void, QString>
    setValue(const QString& key, const QString& text) override {
        if (storeError)
            m_unstored.insert(key);
        else
            m_unstored.clear();
        set(key, text);
        return storeError ? tl::expected<void, QString>(tl::unexpect, *storeError)
                          : tl::expected<void, QString>();
    }

    [[nodiscard]] bool isStored(const QString& key) const override {
        return !m_unstored.contains(key);
    }

    std::optional<QString> storeError; ///< present: storing fails with it

private:
    QHash<QString, QString> m_values;
    QSet<QString> m_unstored;
};

} // namespace lumora::tests
