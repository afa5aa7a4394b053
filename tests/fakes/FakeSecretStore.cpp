#include "fakes/FakeSecretStore.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

SecretLookup FakeSecretStore::lookup(const SecretKey& key) {
    m_calls += u"lookup"_s;
    if (m_lookupTrouble)
        return {*m_lookupTrouble, {}, u"made up by the test"_s};
    const auto found = item(key);
    if (!found)
        return {SecretLookup::Status::Absent, {}, {}};
    return {SecretLookup::Status::Found, found->secret, {}};
}

bool FakeSecretStore::add(const SecretKey& key, const QString& label, const QByteArray& secret) {
    m_calls += u"add"_s;
    if (m_addFails)
        return false;
    m_items.insert_or_assign({key.service, key.account}, Item{label, secret});
    return true;
}

SecretRemoval FakeSecretStore::remove(const SecretKey& key) {
    m_calls += u"remove"_s;
    if (m_removeFails)
        return SecretRemoval::Failed;
    return m_items.erase({key.service, key.account}) > 0 ? SecretRemoval::Removed
                                                         : SecretRemoval::NotFound;
}

std::optional<FakeSecretStore::Item> FakeSecretStore::item(const SecretKey& key) const {
    const auto found = m_items.find({key.service, key.account});
    if (found == m_items.end())
        return std::nullopt;
    return found->second;
}

void FakeSecretStore::put(const SecretKey& key, const QByteArray& secret) {
    m_items.insert_or_assign({key.service, key.account}, Item{{}, secret});
}

} // namespace lumora::tests
