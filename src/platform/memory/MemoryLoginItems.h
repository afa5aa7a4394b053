#pragma once

#include "platform/LoginItemRegistry.h"

namespace lumora {

/// A registry that nobody reads at login: for the demo, which leaves nothing behind.
class MemoryLoginItems final : public LoginItemRegistry {
public:
    LoginItemStatus status() const override { return m_status; }

    tl::expected<void, QString> registerProgram() override {
        m_status = LoginItemStatus::Enabled;
        return {};
    }

    tl::expected<void, QString> unregisterProgram() override {
        m_status = LoginItemStatus::NotRegistered;
        return {};
    }

private:
    LoginItemStatus m_status = LoginItemStatus::NotRegistered;
};

} // namespace lumora
