#pragma once

#include "platform/LoginItemRegistry.h"

#include <QStringList>

#include <optional>

namespace lumora::tests {

/// A registry whose state and troubles the test decides.
class FakeLoginItems final : public LoginItemRegistry {
public:
    LoginItemStatus status() const override { return current; }

    QString place() const override { return QStringLiteral("~/items/lumora"); }

    tl::expected<void, QString> registerProgram() override {
        calls += QStringLiteral("register");
        return change(registerError, LoginItemStatus::Enabled);
    }

    tl::expected<void, QString> unregisterProgram() override {
        calls += QStringLiteral("unregister");
        return change(unregisterError, LoginItemStatus::NotRegistered);
    }

    LoginItemStatus current = LoginItemStatus::NotRegistered;
    std::optional<QString> registerError;   ///< present: the call fails with it
    std::optional<QString> unregisterError; ///< present: the call fails with it
    QStringList calls;                      ///< "register" and "unregister", in order

private:
    tl::expected<void, QString>
    change(const std::optional<QString>& error, LoginItemStatus status) {
        if (error)
            return tl::unexpected<QString>(*error);
        current = status;
        return {};
    }
};

} // namespace lumora::tests
