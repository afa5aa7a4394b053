#include "platform/memory/MemorySecretStore.h"

namespace lumora {

SecretLookup MemorySecretStore::lookup(const SecretKey& key) {
    const auto found = m_secrets.constFind({key.service, key.account});
    if (found == m_secrets.cend())
        return {SecretLookup::Status::Absent, {}, {}};
    return {SecretLookup::Status::Found, *found, {}};
}

bool MemorySecretStore::add(const SecretKey& key, const QString&, const QByteArray& secret) {
    m_secrets.insert({key.service, key.account}, secret);
    Q_EMIT readable();
    return true;
}

SecretRemoval MemorySecretStore::remove(const SecretKey& key) {
    return m_secrets.remove({key.service, key.account}) ? SecretRemoval::Removed
                                                        : SecretRemoval::NotFound;
}

} // namespace lumora
