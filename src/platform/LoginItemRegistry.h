#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace lumora {

/// What the desktop does with the program when the user logs in.
enum class LoginItemStatus {
    NotRegistered,    ///< nothing: the program is no login item
    Enabled,          ///< it starts the program
    RequiresApproval, ///< registered, but the user has switched it off in the desktop's own
                      ///< settings
    NotFound,         ///< registered, but the program is not where the registration says
};

/// The desktop's record of the programs that start at login, as far as it concerns this one. The
/// only record that there is: nothing is kept beside it.
class LoginItemRegistry {
public:
    virtual ~LoginItemRegistry() = default;

    /// Asked of the desktop afresh.
    [[nodiscard]] virtual LoginItemStatus status() const = 0;

    /// Where the record is that counts, for people: the path of a file. Empty where it is nowhere.
    [[nodiscard]] virtual QString place() const { return {}; }

    /// Makes the program a login item that is enabled, whatever it was. The error is the system's
    /// own message.
    [[nodiscard]] virtual tl::expected<void, QString> registerProgram() = 0;

    /// Makes it none. The error is the system's own message.
    [[nodiscard]] virtual tl::expected<void, QString> unregisterProgram() = 0;
};

} // namespace lumora
