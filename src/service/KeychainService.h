#pragma once

#include "platform/Wiped.h"

#include <QString>

#include <optional>

namespace lumora {

class SecretStore;
struct SecretKey;

/// What the token's item is found by.
[[nodiscard]] SecretKey tokenKey();

/// The user's token, kept as one item of the credential store. Nothing is cached: every call asks
/// the store.
class KeychainService {
public:
    /// `store` must outlive this object.
    explicit KeychainService(SecretStore& store);

    /// The token as stored; absent when there is none, it is empty or no UTF-8, or the store cannot
    /// be read.
    [[nodiscard]] std::optional<Wiped<QString>> getToken() const;

    /// Has the user asked, in the background and once per locking, to unlock the store in which
    /// getToken() could not read. Drawing must not lead to this.
    void askToUnlock() const;

    /// Replaces the token by `token` without its surrounding white space; when nothing is left of
    /// it, deletes the token instead. False when the store refused.
    [[nodiscard]] bool setToken(const QString& token);

    /// Removes the token. True also when there was none.
    [[nodiscard]] bool deleteToken();

private:
    SecretStore& m_store;
};

} // namespace lumora
