#include "platform/memory/MemorySecretStore.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

using Status = SecretLookup::Status;

namespace {

const SecretKey key{u"com.example.test"_s, u"main"_s};

} // namespace

TEST(MemorySecretStore, IsEmptyAtFirst) {
    MemorySecretStore store;
    EXPECT_EQ(store.lookup(key).status, Status::Absent);
    EXPECT_EQ(store.remove(key), SecretRemoval::NotFound);
}

TEST(MemorySecretStore, KeepsASecretUntilItIsRemoved) {
    MemorySecretStore store;
    QSignalSpy readable(&store, &SecretStore::readable);
    EXPECT_TRUE(store.add(key, u"A token"_s, "s"));
    EXPECT_EQ(readable.count(), 1);
    EXPECT_EQ(store.lookup(key).status, Status::Found);
    EXPECT_EQ(store.lookup(key).secret, "s");
    EXPECT_EQ(store.remove(key), SecretRemoval::Removed);
    EXPECT_EQ(store.lookup(key).status, Status::Absent);
}

TEST(MemorySecretStore, AddingAgainReplaces) {
    MemorySecretStore store;
    store.add(key, u"A token"_s, "first");
    store.add(key, u"A token"_s, "second");
    EXPECT_EQ(store.lookup(key).secret, "second");
}

TEST(MemorySecretStore, FindsByServiceAndAccount) {
    MemorySecretStore store;
    store.add(key, u"A token"_s, "s");
    EXPECT_EQ(store.lookup({key.service, u"other"_s}).status, Status::Absent);
    EXPECT_EQ(store.lookup({u"other"_s, key.account}).status, Status::Absent);
}
