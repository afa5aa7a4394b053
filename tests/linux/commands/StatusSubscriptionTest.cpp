#include "linux/commands/StatusSubscription.h"

#include "linux/commands/CommandServer.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Has the place of the running program, and answers only when the test says so.
class SlowProgram : public QDBusVirtualObject {
public:
    explicit SlowProgram(const QDBusConnection& bus)
        : m_bus(bus) {
        EXPECT_TRUE(m_bus.registerVirtualObject(commandPath, this));
        EXPECT_TRUE(m_bus.registerService(commandService));
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        if (call.member() == u"Settle")
            return bus.send(call.createReply());
        calls += call;
        return true;
    }

    void answer(const QString& status) { m_bus.send(calls.takeFirst().createReply(status)); }

    void tell(const QString& signal) {
        m_bus.send(QDBusMessage::createSignal(commandPath, commandInterface, signal));
    }

    QList<QDBusMessage> calls; ///< that are not answered yet

private:
    QDBusConnection m_bus;
};

class StatusSubscriptionTest : public testing::Test {
protected:
    void follow(StatusSubscription::Extent extent) {
        subscription.emplace(client, extent);
        QObject::connect(
            &*subscription, &StatusSubscription::changed,
            [this](const std::optional<QString>& status) { heard += status.value_or(u"none"_s); });
    }

    bool isAsked(qsizetype times = 1) {
        return QTest::qWaitFor([&] { return program.calls.size() == times; }, patience);
    }

    bool comesToHear(const QStringList& all) {
        return QTest::qWaitFor([&] { return heard == all; }, patience);
    }

    /// Waits until all that was told has come to the subscription, and all that it asked has come
    /// back.
    void settle() {
        for (int i = 0; i < 2; ++i) {
            const auto call = client.asyncCall(QDBusMessage::createMethodCall(
                commandService, commandPath, commandInterface, u"Settle"_s));
            EXPECT_TRUE(QTest::qWaitFor([&] { return call.isFinished(); }, patience));
            QCoreApplication::processEvents();
        }
    }

    PrivateBus bus;
    QDBusConnection client = bus.connect();
    SlowProgram program{bus.connect()};
    std::optional<StatusSubscription> subscription;
    QStringList heard;
};

} // namespace

TEST_F(StatusSubscriptionTest, AsksOnceMoreAfterWhatChangedMeanwhile) {
    follow(StatusSubscription::Extent::Label);
    ASSERT_TRUE(isAsked());
    for (int i = 0; i < 3; ++i)
        program.tell(u"LabelChanged"_s);
    program.answer(u"old"_s); // is read after the signals, which were sent before
    ASSERT_TRUE(isAsked());
    program.answer(u"new"_s);
    EXPECT_TRUE(comesToHear({u"old"_s, u"new"_s}));
    EXPECT_TRUE(program.calls.isEmpty());
}

TEST_F(StatusSubscriptionTest, HearsNothingOfDetailsThatNobodyWants) {
    follow(StatusSubscription::Extent::Label);
    ASSERT_TRUE(isAsked());
    program.answer(u"one"_s);
    ASSERT_TRUE(comesToHear({u"one"_s}));
    program.tell(u"DetailsChanged"_s);
    settle();
    EXPECT_TRUE(program.calls.isEmpty());
    program.tell(u"LabelChanged"_s);
    EXPECT_TRUE(isAsked());
}

TEST_F(StatusSubscriptionTest, HearsOfDetailsWhereTheyAreWanted) {
    follow(StatusSubscription::Extent::Everything);
    ASSERT_TRUE(isAsked());
    program.answer(u"one"_s);
    ASSERT_TRUE(comesToHear({u"one"_s}));
    program.tell(u"DetailsChanged"_s);
    EXPECT_TRUE(isAsked());
}

TEST_F(StatusSubscriptionTest, TakesTheWordOfNobodyElse) {
    follow(StatusSubscription::Extent::Label);
    ASSERT_TRUE(isAsked());
    program.answer(u"one"_s);
    ASSERT_TRUE(comesToHear({u"one"_s}));
    QDBusConnection stranger = bus.connect();
    stranger.send(QDBusMessage::createSignal(commandPath, commandInterface, u"LabelChanged"_s));
    const auto isThrough = stranger.call(QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
        u"GetId"_s));
    EXPECT_EQ(isThrough.type(), QDBusMessage::ReplyMessage);
    settle();
    EXPECT_TRUE(program.calls.isEmpty());
}
