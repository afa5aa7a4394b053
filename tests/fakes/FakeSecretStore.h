#pragma once

#include "platform/SecretStore.h"

#include <QStringList>

#include <map>
#include <optional>

namespace lumora::tests {

/// A credential store in memory whose troubles the test decides. `readable` is emitted by the test.
class FakeSecretStore final : public SecretStore {
public:
    struct Item {
        QString label;
        QByteArray secret;
    };

    SecretLookup lookup(const SecretKey& key) override;
    bool add(const SecretKey& key, const QString& label, const QByteArray& secret) override;
    SecretRemoval remove(const SecretKey& key) override;

    void askToUnlock() override { ++m_unlockRequests; }

    QString keeper() override { return m_keeper; }

    void setKeeper(const QString& keeper) { m_keeper = keeper; }

    /// The item under `key`, whatever troubles the store has.
    std::optional<Item> item(const SecretKey& key) const;

    /// Puts an item into the store as another program would.
    void put(const SecretKey& key, const QByteArray& secret);

    /// Makes every look-up answer `status`; absent: look-ups work.
    void setLookupTrouble(std::optional<SecretLookup::Status> status) { m_lookupTrouble = status; }

    void setAddFails(bool fails) { m_addFails = fails; }

    void setRemoveFails(bool fails) { m_removeFails = fails; }

    /// The calls that were made: "lookup", "add" and "remove", in order.
    const QStringList& calls() const { return m_calls; }

    /// How often the user was to be asked to unlock something.
    int unlockRequests() const { return m_unlockRequests; }

private:
    using Address = std::pair<QString, QString>;

    std::map<Address, Item> m_items;
    std::optional<SecretLookup::Status> m_lookupTrouble;
    bool m_addFails = false;
    bool m_removeFails = false;
    QString m_keeper;
    QStringList m_calls;
    int m_unlockRequests = 0;
};

} // namespace lumora::tests
