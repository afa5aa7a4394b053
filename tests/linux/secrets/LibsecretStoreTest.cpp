#include "linux/secrets/LibsecretStore.h"

#include "linux/secrets/SettledStore.h"
#include "support/Patience.h"
#include "support/RealKeyring.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Status = SecretLookup::Status;

namespace {

const SecretKey key{u"com.example.test"_s, u"main"_s};
const QStringList keyArguments{u"service"_s, key.service, u"account"_s, key.account};

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

} // namespace

TEST_F(LibsecretStoreTest, KeepsASecretUntilItIsRemoved) {
    keyring.startUnlocked();
    EXPECT_EQ(store.lookup(key).status, Status::Absent);

    ASSERT_TRUE(store.add(key, u"A token"_s, "gr\xC3\xBC\xC3\x9F dich"));
    const SecretLookup found = store.lookup(key);
    EXPECT_EQ(found.status, Status::Found);
    EXPECT_EQ(found.secret, "gr\xC3\xBC\xC3\x9F dich");

    EXPECT_EQ(store.remove(key), SecretRemoval::Removed);
    EXPECT_EQ(store.lookup(key).status, Status::Absent);
    EXPECT_EQ(store.remove(key), SecretRemoval::NotFound);
}

TEST_F(LibsecretStoreTest, KeepsAnEmptySecretAsFound) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, ""));
    const SecretLookup found = store.lookup(key);
    EXPECT_EQ(found.status, Status::Found);
    EXPECT_TRUE(found.secret.isEmpty());
}

TEST_F(LibsecretStoreTest, AddingAgainReplaces) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "first"));
    ASSERT_TRUE(store.add(key, u"A token"_s, "second"));
    EXPECT_EQ(store.lookup(key).secret, "second");
    EXPECT_EQ(items().size(), 1);
}

TEST_F(LibsecretStoreTest, FindsByBothAttributesOnly) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    EXPECT_EQ(store.lookup({key.service, u"other"_s}).status, Status::Absent);
    EXPECT_EQ(store.lookup({u"other"_s, key.account}).status, Status::Absent);
}

TEST_F(LibsecretStoreTest, FindsWhatSecretToolStored) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeWithSecretTool("by hand"));
    EXPECT_EQ(store.lookup(key).secret, "by hand");
    EXPECT_EQ(store.remove(key), SecretRemoval::Removed);
    EXPECT_EQ(items().size(), 0);
}

TEST_F(LibsecretStoreTest, FindsAnItemOfAnySchema) {
    keyring.startUnlocked();
    ASSERT_TRUE(keyring.secretTool(
        QStringList{u"store"_s, u"--label=x"_s, u"xdg:schema"_s, u"org.example.Schema"_s} +
            keyArguments,
        "of a schema"));
    EXPECT_EQ(store.lookup(key).secret, "of a schema");
}

TEST_F(LibsecretStoreTest, RemovesEveryItemOfTheKey) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "one"));
    ASSERT_TRUE(keyring.secretTool(
        QStringList{u"store"_s, u"--label=x"_s, u"more"_s, u"attributes"_s} + keyArguments, "two"));
    ASSERT_EQ(items().size(), 2);
    EXPECT_EQ(store.remove(key), SecretRemoval::Removed);
    EXPECT_EQ(items().size(), 0);
}

TEST_F(LibsecretStoreTest, IsFoundBySecretToolAndCarriesNoOtherAttributes) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "for others"));
    ASSERT_TRUE(keyring.secretTool(QStringList{u"lookup"_s} + keyArguments));
    EXPECT_EQ(keyring.output(), "for others");

    ASSERT_EQ(items().size(), 1);
    const QString item = items().first().path();
    const QString itemInterface = u"org.freedesktop.Secret.Item"_s;
    auto attributes =
        qdbus_cast<QMap<QString, QString>>(propertyOf(item, itemInterface, u"Attributes"_s));
    // gnome-keyring itself files every item without a schema under this one.
    attributes.removeIf([](const auto& attribute) {
        return attribute.key() == u"xdg:schema" &&
               attribute.value() == u"org.freedesktop.Secret.Generic";
    });
    const QMap<QString, QString> expected{{u"service"_s, key.service}, {u"account"_s, key.account}};
    EXPECT_EQ(attributes, expected);
    EXPECT_EQ(propertyOf(item, itemInterface, u"Label"_s).toString(), u"A token"_s);
}

TEST_F(LibsecretStoreTest, ALockedItemReadsAsLockedAndIsReadableAfterUnlocking) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    isToldReadable();
    keyring.lock();

    QElapsedTimer timer;
    timer.start();
    const SecretLookup locked = store.lookup(key);
    EXPECT_LT(timer.elapsed(), patience / 2); // without waiting for anybody
    EXPECT_EQ(locked.status, Status::Locked);
    EXPECT_TRUE(locked.secret.isEmpty());
    EXPECT_FALSE(isToldReadable());

    QSignalSpy readable(&store, &SecretStore::readable);
    keyring.unlock();
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(key).secret, "s");
}

TEST_F(LibsecretStoreTest, NothingIsAddedToOrRemovedFromALockedCollection) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    keyring.lock();
    EXPECT_FALSE(store.add(key, u"A token"_s, "other"));
    EXPECT_EQ(store.remove(key), SecretRemoval::Failed);
    keyring.unlock();
    EXPECT_EQ(store.lookup(key).secret, "s");
}

TEST_F(LibsecretStoreTest, AKeyringThatWasNeverUnlockedReadsAsLockedNotAsEmpty) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    keyring.kill();
    keyring.startLocked();
    EXPECT_EQ(store.lookup(key).status, Status::Locked);
    EXPECT_EQ(store.remove(key), SecretRemoval::Failed);
    EXPECT_FALSE(store.add(key, u"A token"_s, "other"));

    QSignalSpy readable(&store, &SecretStore::readable);
    keyring.unlock();
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(key).secret, "s");
}

TEST_F(LibsecretStoreTest, NothingIsAddedWithoutADefaultCollection) {
    keyring.startLocked(); // over empty folders: there is no collection at all
    EXPECT_EQ(store.lookup(key).status, Status::Absent);
    EXPECT_FALSE(store.add(key, u"A token"_s, "s"));
}

TEST_F(LibsecretStoreTest, WithoutAServiceThereIsNoSecretButAReason) {
    const SecretLookup result = store.lookup(key);
    EXPECT_EQ(result.status, Status::Unavailable);
    EXPECT_EQ(result.reason, u"There is no keyring service"_s);
    EXPECT_FALSE(store.add(key, u"A token"_s, "s"));
    EXPECT_EQ(store.remove(key), SecretRemoval::Failed);
}

TEST_F(LibsecretStoreTest, TellsWhenTheServiceAppears) {
    ASSERT_EQ(store.lookup(key).status, Status::Unavailable);
    QSignalSpy readable(&store, &SecretStore::readable);
    keyring.startUnlocked();
    ASSERT_TRUE(readable.count() > 0 || readable.wait(patience));
    EXPECT_EQ(store.lookup(key).status, Status::Absent);
}

TEST_F(LibsecretStoreTest, OutlivesARestartOfTheService) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    keyring.kill();
    EXPECT_EQ(store.lookup(key).status, Status::Unavailable);

    QSignalSpy readable(&store, &SecretStore::readable);
    keyring.startUnlocked();
    ASSERT_TRUE(readable.count() > 0 || readable.wait(patience));
    EXPECT_EQ(store.lookup(key).secret, "s");
}

TEST_F(LibsecretStoreTest, TellsWhenAnotherProgramAddsTheItem) {
    keyring.startUnlocked();
    ASSERT_EQ(store.lookup(key).status, Status::Absent);
    isToldReadable();

    QSignalSpy readable(&store, &SecretStore::readable);
    ASSERT_TRUE(storeWithSecretTool("by hand"));
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(key).secret, "by hand");

    // And so when it changes the item.
    EXPECT_FALSE(isToldReadable());
    readable.clear();
    ASSERT_TRUE(storeWithSecretTool("anew"));
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(key).secret, "anew");
}

TEST_F(LibsecretStoreTest, StaysSilentAboutItemsOfOthers) {
    keyring.startUnlocked();
    ASSERT_EQ(store.lookup(key).status, Status::Absent);
    isToldReadable();
    ASSERT_TRUE(keyring.secretTool(
        {u"store"_s, u"--label=x"_s, u"service"_s, key.service, u"account"_s, u"other"_s}, "x"));
    EXPECT_FALSE(isToldReadable());
}

TEST_F(LibsecretStoreTest, LookingUpTellsNobodyAnything) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeWithSecretTool("by hand"));
    ASSERT_EQ(store.lookup(key).status, Status::Found);
    isToldReadable();
    ASSERT_EQ(store.lookup(key).status, Status::Found);
    EXPECT_FALSE(isToldReadable());
    ASSERT_TRUE(removeWithSecretTool());
    ASSERT_EQ(store.lookup(key).status, Status::Absent);
    EXPECT_FALSE(isToldReadable());
}

TEST_F(LibsecretStoreTest, AddingTellsOnceAtMost) {
    keyring.startUnlocked();
    ASSERT_EQ(store.lookup(key).status, Status::Absent);
    isToldReadable();
    QSignalSpy readable(&store, &SecretStore::readable);
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    isToldReadable();
    isToldReadable();
    EXPECT_LE(readable.count(), 1);
}

TEST_F(LibsecretStoreTest, ManyCallsLeaveNothingOpen) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    const auto openDescriptors = [] {
        return QDir(u"/proc/self/fd"_s).entryList(QDir::NoFilter).size();
    };
    const auto before = openDescriptors();
    for (int count = 0; count < 50; ++count)
        ASSERT_EQ(store.lookup(key).status, Status::Found);
    // Connections are closed by a thread of GIO's, shortly after.
    EXPECT_TRUE(QTest::qWaitFor([&] { return openDescriptors() <= before; }, patience));
}

TEST_F(LibsecretStoreTest, ADeadBusIsNoMoreThanAReason) {
    keyring.startUnlocked();
    ASSERT_TRUE(store.add(key, u"A token"_s, "s"));
    bus.kill();
    const SecretLookup result = store.lookup(key);
    EXPECT_EQ(result.status, Status::Unavailable);
    EXPECT_EQ(result.reason, u"There is no session bus"_s);
    EXPECT_FALSE(store.add(key, u"A token"_s, "other"));
    EXPECT_EQ(store.remove(key), SecretRemoval::Failed);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !connection.isConnected(); }, patience));
    isToldReadable(); // the connection's own end is dealt with
}

TEST(LibsecretStoreWithoutBus, NeitherFindsNorStartsOne) {
    for (const QString& address : {QString(), u"autolaunch:"_s, u"unix:path=/nowhere/at/all"_s}) {
        LibsecretStore store(
            QDBusConnection(u"no such connection"_s), address, std::chrono::milliseconds(patience));
        EXPECT_EQ(store.lookup(key).status, Status::Unavailable);
        EXPECT_EQ(store.lookup(key).reason, u"There is no session bus"_s);
        EXPECT_FALSE(store.add(key, u"A token"_s, "s"));
        EXPECT_EQ(store.remove(key), SecretRemoval::Failed);
    }
}

TEST(LibsecretStoreBusAddress, IsTheSessionsOrElseTheUserBus) {
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());

    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/some/where");
    EXPECT_EQ(LibsecretStore::sessionBusAddress(), u"unix:path=/some/where"_s);
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_EQ(LibsecretStore::sessionBusAddress(), QString());
    QFile socket(runtime.filePath(u"bus"_s));
    ASSERT_TRUE(socket.open(QFile::WriteOnly));
    EXPECT_EQ(LibsecretStore::sessionBusAddress(), u"unix:path="_s + socket.fileName());

    address.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS")
                     : qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    folder.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", folder);
}

TEST(KeyringOf, KnowsThoseThatDesktopsBring) {
    EXPECT_EQ(LibsecretStore::keyringOf(u"gnome-keyring-d"_s), u"GNOME Keyring"_s);
    for (const auto& process : {u"kwalletd5"_s, u"kwalletd6"_s, u"ksecretd"_s})
        EXPECT_EQ(LibsecretStore::keyringOf(process), u"KWallet"_s);
    EXPECT_EQ(LibsecretStore::keyringOf(u"keepassxc"_s), u"KeePassXC"_s);
    EXPECT_EQ(LibsecretStore::keyringOf(u"python3"_s), QString());
}

TEST_F(LibsecretStoreTest, NamesTheKeyringThatAnswers) {
    EXPECT_EQ(store.keeper(), QString());
    keyring.startUnlocked();
    EXPECT_EQ(store.keeper(), u"GNOME Keyring"_s);
}
