#pragma once

#include <QObject>
#include <QString>

#include <tl/expected.hpp>

#include <optional>

namespace lumora {

/// The user's preferences as text by key. Nothing is cached: every read sees what is stored now.
/// What was set but could not be stored holds all the same, for as long as the program runs.
class Preferences : public QObject {
    Q_OBJECT

public:
    /// The text that holds; absent when the key is not set or the store cannot be read.
    [[nodiscard]] virtual std::optional<QString> value(const QString& key) const = 0;

    /// Has `text` hold from now on, and stores it with all that could not be stored so far. Other
    /// keys keep their values. The error says why it is not stored, in the system's own words.
    [[nodiscard]] virtual tl::expected<void, QString>
    setValue(const QString& key, const QString& text) = 0;

    /// Whether the text that holds is the one that is stored.
    [[nodiscard]] virtual bool isStored(const QString& key) const = 0;

Q_SIGNALS:
    /// Some preference may have changed, here or by another program's hand.
    void changed();

    /// It was another program's hand. Follows `changed`.
    void changedElsewhere();
};

} // namespace lumora
