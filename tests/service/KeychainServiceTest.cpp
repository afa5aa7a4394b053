#include "service/KeychainService.h"

#include "fakes/FakeSecretStore.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class KeychainServiceTest : public testing::Test {
protected:
    /// What getToken() makes of an item with these bytes.
    std::optional<Wiped<QString>> tokenFrom(const QByteArray& bytes) {
        store.put(key, bytes);
        return keychain.getToken();
    }

    const SecretKey key{u"com.lumora.app"_s, u"briefingToken"_s};
    FakeSecretStore store;
    KeychainService keychain{store};
};

} // namespace

TEST_F(KeychainServiceTest, WithoutAnItemThereIsNoToken) {
    EXPECT_EQ(keychain.getToken(), std::nullopt);
    store.put({u"com.lumora.app"_s, u"another"_s}, "x");
    store.put({u"another"_s, u"briefingToken"_s}, "x");
    EXPECT_EQ(keychain.getToken(), std::nullopt);
}

TEST_F(KeychainServiceTest, TheTokenComesAsStored) {
    EXPECT_EQ(tokenFrom("s3cr3t"), u"s3cr3t"_s);
    EXPECT_EQ(tokenFrom(" s3cr3t\n"), u" s3cr3t\n"_s);
    EXPECT_EQ(tokenFrom("t\xc3\xb6k\xf0\x9f\x94\x91"), u"tök🔑"_s);
    EXPECT_EQ(tokenFrom("\xef\xbb\xbfs3cr3t"), u"\ufeffs3cr3t"_s);
}

TEST_F(KeychainServiceTest, AnEmptyItemIsNoToken) {
    EXPECT_EQ(tokenFrom(""), std::nullopt);
    EXPECT_EQ(tokenFrom(QByteArray()), std::nullopt);
}

TEST_F(KeychainServiceTest, WhatIsNoUtf8IsNoToken) {
    EXPECT_EQ(tokenFrom("\xff"), std::nullopt);
    EXPECT_EQ(tokenFrom("abc\xc3"), std::nullopt);
    EXPECT_EQ(tokenFrom("\xc0\xaf"), std::nullopt);
    EXPECT_EQ(tokenFrom("a\xed\xa0\x80z"), std::nullopt);
}

TEST_F(KeychainServiceTest, AStoreThatCannotBeReadHoldsNoToken) {
    store.put(key, "s3cr3t");
    for (const auto trouble :
         {SecretLookup::Status::Locked, SecretLookup::Status::Unavailable,
          SecretLookup::Status::Absent}) {
        store.setLookupTrouble(trouble);
        EXPECT_EQ(keychain.getToken(), std::nullopt);
    }
    store.setLookupTrouble(std::nullopt);
    EXPECT_EQ(keychain.getToken(), u"s3cr3t"_s);
}

TEST_F(KeychainServiceTest, EveryReadAsksTheStore) {
    EXPECT_FALSE(keychain.getToken());
    EXPECT_FALSE(keychain.getToken());
    EXPECT_EQ(store.calls(), QStringList({u"lookup"_s, u"lookup"_s}));
}

TEST_F(KeychainServiceTest, SettingStoresWithoutSurroundingWhiteSpace) {
    EXPECT_TRUE(keychain.setToken(u"  \t s3c r3t \u00a0\u2003\r\n"_s));
    ASSERT_TRUE(store.item(key));
    EXPECT_EQ(store.item(key)->secret, "s3c r3t");
    EXPECT_EQ(store.item(key)->label, u"Lumora briefing token"_s);
    EXPECT_EQ(keychain.getToken(), u"s3c r3t"_s);
}

TEST_F(KeychainServiceTest, SettingReplacesByDeletingThenAdding) {
    store.put(key, "old");
    EXPECT_TRUE(keychain.setToken(u"new"_s));
    EXPECT_EQ(store.calls(), QStringList({u"remove"_s, u"add"_s}));
    EXPECT_EQ(store.item(key)->secret, "new");
}

TEST_F(KeychainServiceTest, SettingSucceedsExactlyWhenAddingDoes) {
    store.setRemoveFails(true);
    EXPECT_TRUE(keychain.setToken(u"new"_s));
    store.setRemoveFails(false);
    store.setAddFails(true);
    EXPECT_FALSE(keychain.setToken(u"newer"_s));
}

TEST_F(KeychainServiceTest, SettingSpacesOnlyDeletes) {
    store.put(key, "old");
    EXPECT_TRUE(keychain.setToken(u" \n "_s));
    EXPECT_FALSE(store.item(key));
    EXPECT_TRUE(keychain.setToken(u"   "_s));
    EXPECT_TRUE(keychain.setToken({}));
    EXPECT_EQ(store.calls(), QStringList({u"remove"_s, u"remove"_s, u"remove"_s}));
    store.setRemoveFails(true);
    EXPECT_FALSE(keychain.setToken(u"   "_s));
}

TEST_F(KeychainServiceTest, DeletingSucceedsAlsoWhenThereWasNothing) {
    store.put(key, "old");
    EXPECT_TRUE(keychain.deleteToken());
    EXPECT_FALSE(store.item(key));
    EXPECT_TRUE(keychain.deleteToken());
    store.setRemoveFails(true);
    EXPECT_FALSE(keychain.deleteToken());
}
