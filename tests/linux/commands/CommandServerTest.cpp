#include "linux/commands/CommandServer.h"

#include "support/BusProbe.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class CommandServerTest : public testing::Test {
protected:
    CommandHandlers handlers() {
        return {
            .status = [] { return u"{}"_s; },
            .refresh = [this](auto done) { finishRefresh = done; },
            .join = [this](const QByteArray& token, auto done) { asked("join:" + token, done); },
            .capture =
                [this](const QString& text, auto done) { asked("capture:" + text.toUtf8(), done); },
            .toggleHabit =
                [this](const QString& habit, auto done) { asked("habit:" + habit.toUtf8(), done); },
            .finishChore =
                [this](const QString& chore, auto done) { asked("chore:" + chore.toUtf8(), done); },
            .agenda = [this] { return agenda; },
            .open = [this](const QByteArray& token) { calls += "open:" + token; },
            .hide = [this] { calls += "hide"; },
            .toggle = [this](const QByteArray& token) { calls += "toggle:" + token; },
            .openSettings = [this](const QByteArray& token) { calls += "settings:" + token; },
            .quit = [this] { ++quits; },
        };
    }

    /// Calls a method from another connection and waits for its answer.
    QDBusPendingCall call(const QString& method, const QVariantList& arguments = {}) {
        auto message =
            QDBusMessage::createMethodCall(commandService, commandPath, commandInterface, method);
        message.setArguments(arguments);
        return client.asyncCall(message);
    }

    static QVariantList answers(const QDBusPendingCall& pending) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }, patience));
        return pending.reply().arguments();
    }

    static QString answer(const QDBusPendingCall& pending) {
        return answers(pending).value(0).toString();
    }

    /// Keeps what was asked for, and refuses it.
    void asked(const QByteArray& what, const CommandHandlers::Done& done) {
        calls += what;
        done(u"no"_s);
    }

    PrivateBus bus;
    QDBusConnection client = bus.connect();
    std::function<void(std::optional<QString>)> finishRefresh;
    QByteArrayList calls; ///< what was asked for, with the arguments
    tl::expected<QString, QString> agenda = u"{}"_s;
    int quits = 0;
};

} // namespace

TEST_F(CommandServerTest, AnswersTheStatus) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    EXPECT_EQ(answer(call(u"Status"_s)), u"{}"_s);
}

TEST_F(CommandServerTest, ARefreshAnswersWhenItHasEnded) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    const auto pending = call(u"Refresh"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(finishRefresh); }, patience));
    EXPECT_FALSE(pending.isFinished());
    finishRefresh(u"Server error (503)"_s);
    EXPECT_EQ(answers(pending), (QVariantList{false, u"Server error (503)"_s}));
}

TEST_F(CommandServerTest, ARefreshTellsOfItsSuccessApartFromItsMessage) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    for (const std::optional<QString>& failure : {std::optional(u""_s), std::optional<QString>()}) {
        const auto pending = call(u"Refresh"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return bool(finishRefresh); }, patience));
        std::exchange(finishRefresh, nullptr)(failure);
        EXPECT_EQ(answers(pending), (QVariantList{!failure, QString()}));
    }
}

TEST_F(CommandServerTest, PassesOnWhatConcernsWindows) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    answer(call(u"Open"_s, {u"one"_s}));
    answer(call(u"Hide"_s));
    answer(call(u"Toggle"_s, {u"two"_s}));
    answer(call(u"OpenSettings"_s, {u"three"_s}));
    EXPECT_EQ(calls, (QByteArrayList{"open:one", "hide", "toggle:two", "settings:three"}));
}

TEST_F(CommandServerTest, SaysOnTheBusThatSomethingChangedAndNotWhat) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    BusProbe probe(client, commandService);
    probe.listen(commandPath, commandInterface);
    answer(call(u"Status"_s));
    server.announceLabel();
    server.announceDetails();
    EXPECT_EQ(probe.signalsNamed(u"LabelChanged"_s), QList<QVariantList>{QVariantList()});
    EXPECT_EQ(probe.signalsNamed(u"DetailsChanged"_s), QList<QVariantList>{QVariantList()});
}

TEST_F(CommandServerTest, SaysSoOnlyToThoseWhoAskedSince) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    BusProbe probe(client, commandService);
    probe.listen(commandPath, commandInterface);
    server.announceLabel();
    server.announceDetails();
    answer(call(u"Status"_s));
    // Whoever follows the label alone does not ask again here.
    for (int time = 0; time < 3; ++time)
        server.announceDetails();
    server.announceLabel();
    server.announceLabel();
    EXPECT_EQ(probe.signalsNamed(u"LabelChanged"_s).size(), 1);
    EXPECT_EQ(probe.signalsNamed(u"DetailsChanged"_s).size(), 1);
    answer(call(u"Status"_s));
    server.announceLabel();
    EXPECT_EQ(probe.signalsNamed(u"LabelChanged"_s).size(), 2);
}

TEST_F(CommandServerTest, PassesOnWhatConcernsTheDay) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    const QVariantList refused{false, u"no"_s};
    EXPECT_EQ(answers(call(u"Join"_s, {u"one"_s})), refused);
    EXPECT_EQ(answers(call(u"Capture"_s, {u"two"_s})), refused);
    EXPECT_EQ(answers(call(u"ToggleHabit"_s, {u"three"_s})), refused);
    EXPECT_EQ(answers(call(u"FinishChore"_s, {u"four"_s})), refused);
    EXPECT_EQ(calls, (QByteArrayList{"join:one", "capture:two", "habit:three", "chore:four"}));
}

TEST_F(CommandServerTest, AnswersTheAgendaOrWhyThereIsNone) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    EXPECT_EQ(answers(call(u"Agenda"_s)), (QVariantList{true, u"{}"_s}));
    agenda = tl::unexpected(u"not yet"_s);
    EXPECT_EQ(answers(call(u"Agenda"_s)), (QVariantList{false, u"not yet"_s}));
}

TEST_F(CommandServerTest, DesktopsMayActivateIt) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    const auto activate = [this](const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(
            commandService, commandPath, u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        const auto pending = client.asyncCall(message);
        EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }, patience));
        EXPECT_FALSE(pending.isError());
    };
    const QVariantMap token{{u"activation-token"_s, u"new"_s}, {u"desktop-startup-id"_s, u"x"_s}};
    activate(u"Activate"_s, {token});
    activate(u"Open"_s, {QStringList(u"file:///etc/passwd"_s), QVariantMap()});
    const auto act = [&](const QString& name) {
        const QVariantMap older{{u"desktop-startup-id"_s, u"old"_s}};
        activate(u"ActivateAction"_s, {name, QVariantList(), older});
    };
    act(u"settings"_s);
    act(u"anything"_s);
    EXPECT_EQ(calls, (QByteArrayList{"open:new", "open:", "settings:old"}));
    act(u"refresh"_s);
    EXPECT_TRUE(finishRefresh);
    finishRefresh(std::nullopt); // nobody waits for it
    act(u"quit"_s);
    EXPECT_EQ(quits, 1);
}

TEST_F(CommandServerTest, PassesOnQuit) {
    CommandServer server(handlers(), bus.connect());
    ASSERT_TRUE(server.claim());
    answer(call(u"Quit"_s));
    EXPECT_EQ(quits, 1);
}

TEST_F(CommandServerTest, OnlyOneProcessIsTheRunningOne) {
    CommandServer first(handlers(), bus.connect());
    EXPECT_TRUE(first.claim());
    CommandServer second(handlers(), bus.connect());
    EXPECT_FALSE(second.claim());
}

TEST_F(CommandServerTest, AnswersNobodyBeforeItIsTheRunningOne) {
    const QDBusConnection serverBus = bus.connect();
    CommandServer server(handlers(), serverBus);
    const auto quit = client.asyncCall(QDBusMessage::createMethodCall(
        serverBus.baseService(), commandPath, commandInterface, u"Quit"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return quit.isFinished(); }, patience));
    EXPECT_EQ(QDBusPendingReply<>(quit).error().type(), QDBusError::UnknownObject);
    EXPECT_EQ(quits, 0);
}

TEST_F(CommandServerTest, TheNameIsFreeAgainAfterwards) {
    {
        EXPECT_TRUE(CommandServer(handlers(), bus.connect()).claim());
    }
    CommandServer next(handlers(), bus.connect());
    EXPECT_TRUE(next.claim());
}

TEST_F(CommandServerTest, WithoutABusTheProgramRunsAlone) {
    CommandServer server(handlers(), QDBusConnection(u"no-such-bus"_s));
    EXPECT_TRUE(server.claim());
}
