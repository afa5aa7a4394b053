#include "fakes/FakeSecretService.h"
#include "linux/secrets/LibsecretStore.h"
#include "linux/secrets/SettledStore.h"
#include "support/Patience.h"

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

const SecretKey tokenKey{u"com.example.test"_s, u"main"_s};

/// A store whose service misbehaves as the test says.
class SecretServiceFaults : public testing::Test {
protected:
    bool isCalled(const QString& method, int times) {
        return QTest::qWaitFor([&] { return service.calls(method) == times; }, patience);
    }

    /// What a refresh does.
    Status lookUpOrAsk() {
        const Status status = store.lookup(tokenKey).status;
        store.askToUnlock();
        return status;
    }

    PrivateBus bus;
    FakeSecretService service{bus};
    QDBusConnection connection = bus.connect();
    LibsecretStore store{connection, bus.address(), std::chrono::milliseconds(patience)};
};

/// The same with a store that soon gives up; the parameter is a method that is never answered.
class SecretServiceHangs : public testing::TestWithParam<const char*> {
protected:
    SecretServiceHangs() { service.neverAnswer(QString::fromLatin1(GetParam())); }

    PrivateBus bus;
    FakeSecretService service{bus};
    LibsecretStore store{bus.connect(), bus.address(), 150ms};
};

using HangsOnReading = SecretServiceHangs;
using HangsOnLooking = SecretServiceHangs;
using HangsOnAdding = SecretServiceHangs;
using HangsOnRemoving = SecretServiceHangs;

std::string nameOf(const testing::TestParamInfo<const char*>& method) {
    return method.param;
}

// Far below what a D-Bus call waits of its own accord (25 s), far above the store's own limit.
constexpr qint64 bound = 15'000;

} // namespace

TEST_P(HangsOnReading, IsBounded) {
    service.setHasItem(true);
    QElapsedTimer timer;
    timer.start();
    const SecretLookup result = store.lookup(tokenKey);
    EXPECT_LT(timer.elapsed(), bound);
    EXPECT_NE(result.status, Status::Found);
    EXPECT_TRUE(result.secret.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    SecretService, HangsOnReading,
    testing::Values("GetAll", "SearchItems", "OpenSession", "GetSecrets"), nameOf);

TEST_P(HangsOnLooking, IsUnavailableForALateAnswer) {
    QElapsedTimer timer;
    timer.start();
    const SecretLookup result = store.lookup(tokenKey);
    EXPECT_LT(timer.elapsed(), bound);
    EXPECT_EQ(result.status, Status::Unavailable);
    EXPECT_EQ(result.reason, u"The keyring service did not answer in time"_s);
}

INSTANTIATE_TEST_SUITE_P(
    SecretService, HangsOnLooking, testing::Values("GetAll", "SearchItems", "ReadAlias"), nameOf);

TEST_P(HangsOnAdding, IsBounded) {
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(store.add(tokenKey, u"A token"_s, "s"));
    EXPECT_LT(timer.elapsed(), bound);
}

INSTANTIATE_TEST_SUITE_P(
    SecretService, HangsOnAdding,
    testing::Values("GetAll", "ReadAlias", "OpenSession", "CreateItem"), nameOf);

TEST_P(HangsOnRemoving, IsBounded) {
    service.setHasItem(true);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(store.remove(tokenKey), SecretRemoval::Failed);
    EXPECT_LT(timer.elapsed(), bound);
}

INSTANTIATE_TEST_SUITE_P(
    SecretService, HangsOnRemoving, testing::Values("GetAll", "SearchItems", "Delete"), nameOf);

TEST_F(SecretServiceFaults, TheFakeServesAsARealOneWould) {
    service.setHasItem(true);
    EXPECT_EQ(store.lookup(tokenKey).status, Status::Found);
    EXPECT_EQ(store.lookup(tokenKey).secret, "from the fake");
    EXPECT_TRUE(store.add(tokenKey, u"A token"_s, "s"));
    EXPECT_EQ(store.remove(tokenKey), SecretRemoval::Removed);
    EXPECT_EQ(store.lookup(tokenKey).status, Status::Absent);
}

TEST_F(SecretServiceFaults, ARemovalThatWantsAPersonFailsAtOnceAndShowsNothing) {
    service.setHasItem(true);
    service.setConfirmsRemoval(true);
    EXPECT_EQ(store.remove(tokenKey), SecretRemoval::Failed);
    EXPECT_TRUE(isCalled(u"Dismiss"_s, 1));
    EXPECT_EQ(service.calls(u"Prompt"_s), 0);
}

TEST_F(SecretServiceFaults, AsksForNothingWhileNothingIsLocked) {
    EXPECT_EQ(lookUpOrAsk(), Status::Absent);
    settle(connection);
    EXPECT_EQ(service.calls(u"Unlock"_s), 0);
}

TEST_F(SecretServiceFaults, LookingAloneAsksTheUserForNothing) {
    service.setLocked(true);
    EXPECT_EQ(store.lookup(tokenKey).status, Status::Locked);
    settle(connection);
    EXPECT_EQ(service.calls(u"Unlock"_s), 0);
    store.askToUnlock();
    EXPECT_TRUE(isCalled(u"Prompt"_s, 1));
}

TEST_F(SecretServiceFaults, ChangingWhatIsLockedAsksTheUser) {
    service.setLocked(true);
    EXPECT_EQ(store.remove(tokenKey), SecretRemoval::Failed);
    EXPECT_TRUE(isCalled(u"Prompt"_s, 1));
}

TEST_F(SecretServiceFaults, AsksOncePerLockingHoweverOftenItIsFoundLocked) {
    service.setLocked(true); // the report of it arrives after the first look-up
    for (int count = 0; count < 3; ++count)
        EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    EXPECT_TRUE(isCalled(u"Prompt"_s, 1));
    EXPECT_FALSE(store.add(tokenKey, u"A token"_s, "s"));
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    settle(connection);
    EXPECT_EQ(service.calls(u"Unlock"_s), 1);
    EXPECT_EQ(service.calls(u"Prompt"_s), 1);
}

TEST_F(SecretServiceFaults, WhoDismissesThePromptIsAskedAgainOnlyWhenItIsLockedAnew) {
    service.setLocked(true);
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    ASSERT_TRUE(isCalled(u"Prompt"_s, 1));
    QSignalSpy readable(&store, &SecretStore::readable);
    service.completePrompt(true);
    settle(connection);
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    settle(connection);
    EXPECT_EQ(service.calls(u"Unlock"_s), 1);
    EXPECT_EQ(readable.count(), 0);

    service.setLocked(false);
    settle(connection);
    service.setLocked(true);
    settle(connection);
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    EXPECT_TRUE(isCalled(u"Prompt"_s, 2));
}

TEST_F(SecretServiceFaults, TellsWhenThePromptIsAnswered) {
    service.setLocked(true);
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    ASSERT_TRUE(isCalled(u"Prompt"_s, 1));

    // Some services end the prompt without a word about the collection.
    QSignalSpy readable(&store, &SecretStore::readable);
    service.setHasItem(true);
    service.setLocked(false, false);
    service.completePrompt(false);
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(tokenKey).status, Status::Found);
    settle(connection);
    EXPECT_EQ(readable.count(), 1);

    // And they do not tell of the next locking either.
    service.setHasItem(false);
    service.setLocked(true, false);
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    EXPECT_TRUE(isCalled(u"Prompt"_s, 2));
}

TEST_F(SecretServiceFaults, APromptThatEndsWithoutUnlockingIsNotShownAgain) {
    service.setLocked(true);
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    ASSERT_TRUE(isCalled(u"Prompt"_s, 1));
    service.completePrompt(false);
    settle(connection);
    EXPECT_EQ(lookUpOrAsk(), Status::Locked);
    settle(connection);
    EXPECT_EQ(service.calls(u"Prompt"_s), 1);
}

TEST_F(SecretServiceFaults, AReportOfUnlockingIsNoNewsWhenTheSecretWasRead) {
    service.setHasItem(true);
    EXPECT_EQ(store.lookup(tokenKey).status, Status::Found);
    QSignalSpy readable(&store, &SecretStore::readable);
    service.setLocked(false);
    settle(connection);
    EXPECT_EQ(readable.count(), 0);
}
