#pragma once

#include "platform/Preferences.h"

#include <QHash>

namespace lumora {

/// Preferences that live as long as the process: for the demo, which leaves nothing behind.
class MemoryPreferences final : public Preferences {
public:
    [[nodiscard]] std::optional<QString> value(const QString& key) const override;
    [[nodiscard]] tl::expected<void, QString>
    setValue(const QString& key, const QString& text) override;

    [[nodiscard]] bool isStored(const QString&) const override { return true; }

private:
    QHash<QString, QString> m_values;
};

} // namespace lumora
