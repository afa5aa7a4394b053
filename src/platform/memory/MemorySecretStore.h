#pragma once

#include "platform/SecretStore.h"

#include <QHash>

namespace lumora {

/// Secrets that live as long as the process: for the demo, which leaves nothing behind.
class MemorySecretStore final : public SecretStore {
public:
    SecretLookup lookup(const SecretKey& key) override;
    bool add(const SecretKey& key, const QString& label, const QByteArray& secret) override;
    SecretRemoval remove(const SecretKey& key) override;

    QString keeper() override {
        return QStringLiteral("this program's memory, for as long as it runs");
    }

private:
    QHash<QPair<QString, QString>, QByteArray> m_secrets;
};

} // namespace lumora
