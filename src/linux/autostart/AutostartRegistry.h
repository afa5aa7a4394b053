#pragma once

#include "platform/LoginItemRegistry.h"

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace lumora {

class DesktopEntry;

/// The login items of the freedesktop.org desktops: entries in the folders "autostart", of which
/// the user's own comes before those of the system.
class AutostartRegistry final : public LoginItemRegistry {
public:
    /// Where the entries are, and what they start.
    struct Places {
        QString userFolder;        ///< made when something is registered
        QStringList systemFolders; ///< the most important first
        QString program;           ///< absolute
    };

    /// The places of the user who runs the program: by $XDG_CONFIG_HOME and $XDG_CONFIG_DIRS.
    static Places defaultPlaces();

    explicit AutostartRegistry(Places places = defaultPlaces());

    /// By the entry that counts: the user's, or else the system's. An entry is enabled when no
    /// desktop has switched it off and what it starts exists.
    [[nodiscard]] LoginItemStatus status() const override;

    /// The entry that counts; without one the user's, which would be written. In the user's home
    /// it begins with "~".
    [[nodiscard]] QString place() const override;

    /// Writes the user's entry in one step. What else an entry of theirs says is kept.
    [[nodiscard]] tl::expected<void, QString> registerProgram() override;

    /// Removes the user's entry; an entry of the system is hidden by one that says so.
    [[nodiscard]] tl::expected<void, QString> unregisterProgram() override;

private:
    QString userFile() const;
    [[nodiscard]] std::optional<QString> effectiveFile() const;
    bool hasSystemEntry() const;
    [[nodiscard]] tl::expected<void, QString> write(const DesktopEntry& entry) const;

    const Places m_places;
};

} // namespace lumora
