#include "linux/secrets/LibsecretStoreFixture.h"

using namespace lumora;
using namespace lumora::tests;

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
