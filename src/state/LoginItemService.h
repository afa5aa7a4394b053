#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace lumora {

class LoginItemRegistry;

/// Turns the program's own login item on and off. Keeps nothing: the registry is the only record.
class LoginItemService {
public:
    /// `registry` must outlive this object.
    explicit LoginItemService(LoginItemRegistry& registry);

    /// Has the program started at login, or no longer. Touches the registry only when there is
    /// something to change: turning on an enabled item and turning off one that was never
    /// registered succeed at once. A failure carries the registry's message.
    [[nodiscard]] tl::expected<void, QString> setEnabled(bool enabled);

private:
    LoginItemRegistry& m_registry;
};

} // namespace lumora
