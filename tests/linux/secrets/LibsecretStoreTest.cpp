#include "linux/secrets/LibsecretStoreFixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

using namespace lumora;
using namespace lumora::tests;

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

TEST_F(LibsecretStoreTest, NamesTheKeyringThatAnswers) {
    EXPECT_EQ(store.keeper(), QString());
    keyring.startUnlocked();
    EXPECT_EQ(store.keeper(), u"GNOME Keyring"_s);
}
