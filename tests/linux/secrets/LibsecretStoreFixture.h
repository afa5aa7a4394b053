#pragma once

#include "linux/secrets/LibsecretStore.h"
#include "linux/secrets/SettledStore.h"
#include "support/Patience.h"
#include "support/RealKeyring.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace lumora::tests {

using namespace Qt::Literals::StringLiterals;

using Status = SecretLookup::Status;

inline const SecretKey key{u"com.example.test"_s, u"main"_s};
inline const QStringList keyArguments{u"service"_s, key.service, u"account"_s, key.account};

/// A store on a private bus with a real keyring, which is not started yet.
class LibsecretStoreTest : public testing::Test {
protected:
    bool storeWithSecretTool(const QByteArray& secret) {
        return keyring.secretTool(
            QStringList{u"store"_s, u"--label=A token"_s} + keyArguments, secret);
    }

    bool removeWithSecretTool() {
        return keyring.secretTool(QStringList{u"clear"_s} + keyArguments);
    }

    /// Lets everything that is still on its way arrive; whether `readable` was told in between.
    bool isToldReadable() {
        QSignalSpy told(&store, &SecretStore::readable);
        settle(connection);
        return told.count() > 0;
    }

    QVariant propertyOf(const QString& path, const QString& interface, const QString& name) {
        auto call = QDBusMessage::createMethodCall(
            u"org.freedesktop.secrets"_s, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
        call.setArguments({interface, name});
        const QDBusMessage reply = connection.call(call);
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    QList<QDBusObjectPath> items() {
        const QVariant paths = propertyOf(
            u"/org/freedesktop/secrets/collection/login"_s, u"org.freedesktop.Secret.Collection"_s,
            u"Items"_s);
        return qdbus_cast<QList<QDBusObjectPath>>(paths);
    }

    PrivateBus bus;
    QDBusConnection connection = bus.connect();
    RealKeyring keyring{bus};
    LibsecretStore store{connection, bus.address(), std::chrono::milliseconds(patience)};
};

} // namespace lumora::tests
