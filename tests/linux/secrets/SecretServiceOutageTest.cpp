#include "fakes/FakeSecretService.h"
#include "linux/secrets/LibsecretStore.h"
#include "linux/secrets/SettledStore.h"
#include "support/Patience.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Status = SecretLookup::Status;

namespace {

const SecretKey outageKey{u"com.example.test"_s, u"main"_s};
const QString search = u"SearchItems"_s;

/// A store that soon gives up, with a service that is there and does not answer searches.
class SecretServiceOutage : public testing::Test {
protected:
    SecretServiceOutage() {
        service->setHasItem(true);
        service->neverAnswer(search);
    }

    std::chrono::steady_clock::time_point now{};
    PrivateBus bus;
    std::unique_ptr<FakeSecretService> service = std::make_unique<FakeSecretService>(bus);
    QDBusConnection connection = bus.connect();
    LibsecretStore store{connection, bus.address(), 150ms, [this] { return now; }};
};

} // namespace

TEST_F(SecretServiceOutage, OneCallWaitsAndTheOthersDoNotEvenAsk) {
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    EXPECT_EQ(service->calls(search), 1);
    const int sessions = service->calls(u"OpenSession"_s);
    const SecretLookup second = store.lookup(outageKey);
    EXPECT_EQ(second.status, Status::Unavailable);
    EXPECT_EQ(second.reason, u"The keyring service did not answer in time"_s);
    EXPECT_FALSE(store.add(outageKey, u"A token"_s, "s"));
    EXPECT_EQ(store.remove(outageKey), SecretRemoval::Failed);
    EXPECT_EQ(service->calls(search), 1);
    EXPECT_EQ(service->calls(u"OpenSession"_s), sessions);
    EXPECT_EQ(service->calls(u"CreateItem"_s), 0);
}

TEST_F(SecretServiceOutage, AChangeThatMeetsSilenceCountsAsWell) {
    EXPECT_EQ(store.remove(outageKey), SecretRemoval::Failed);
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    EXPECT_EQ(service->calls(search), 1);
}

TEST_F(SecretServiceOutage, IsOverAfterHalfAMinute) {
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    service->answerAgain();
    now += 29s;
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    now += 1s;
    EXPECT_EQ(store.lookup(outageKey).status, Status::Found);
}

TEST_F(SecretServiceOutage, IsOverWhenTheServiceAnswersAtLast) {
    QSignalSpy readable(&store, &SecretStore::readable);
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    service->answerAgain();
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(outageKey).status, Status::Found);
}

TEST_F(SecretServiceOutage, OfAServiceThatIsAlwaysTooSlowIsToldOnce) {
    QSignalSpy readable(&store, &SecretStore::readable);
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    EXPECT_EQ(service->calls(search), 2);
    settle(connection);
    EXPECT_EQ(readable.count(), 1);
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    EXPECT_EQ(service->calls(search), 2);
}

TEST_F(SecretServiceOutage, IsOverWhenAnotherServiceTakesItsPlace) {
    service->neverAnswer(u"Get"_s); // not even this
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    service.reset();
    EXPECT_EQ(store.lookup(outageKey).status, Status::Unavailable);
    QSignalSpy readable(&store, &SecretStore::readable);
    service = std::make_unique<FakeSecretService>(bus);
    service->setHasItem(true);
    ASSERT_TRUE(readable.wait(patience));
    EXPECT_EQ(store.lookup(outageKey).status, Status::Found);
}

TEST_F(SecretServiceOutage, AbsenceIsRememberedToo) {
    service.reset();
    EXPECT_EQ(store.lookup(outageKey).reason, u"There is no keyring service"_s);
    EXPECT_EQ(store.lookup(outageKey).reason, u"There is no keyring service"_s);
}
