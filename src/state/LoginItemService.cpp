#include "state/LoginItemService.h"

#include "platform/LoginItemRegistry.h"

namespace lumora {

LoginItemService::LoginItemService(LoginItemRegistry& registry)
    : m_registry(registry) {}

tl::expected<void, QString> LoginItemService::setEnabled(bool enabled) {
    const LoginItemStatus status = m_registry.status();
    if (enabled) {
        if (status == LoginItemStatus::Enabled)
            return {};
        return m_registry.registerProgram();
    }
    // What is switched off or broken is still registered, and goes too.
    if (status == LoginItemStatus::NotRegistered)
        return {};
    return m_registry.unregisterProgram();
}

} // namespace lumora
