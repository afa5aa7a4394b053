#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace lumora {

/// The user's preferences as text by key. Nothing is cached: every read sees what is stored now.
class Preferences : public QObject {
    Q_OBJECT

public:
    /// The stored text; absent when the key is not set or the store cannot be read.
    [[nodiscard]] virtual std::optional<QString> value(const QString& key) const = 0;

    /// Stores `text`; false when the store could not be written. Other keys keep their values.
    [[nodiscard]] virtual bool setValue(const QString& key, const QString& text) = 0;

Q_SIGNALS:
    /// Some preference may have changed, here or by another program's hand.
    void changed();

    /// It was another program's hand. Follows `changed`.
    void changedElsewhere();
};

} // namespace lumora
