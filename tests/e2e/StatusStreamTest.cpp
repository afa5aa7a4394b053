#include "e2e/ConfiguredProgram.h"
#include "e2e/FollowingProcess.h"

#include <QDBusVirtualObject>
#include <QJsonArray>
#include <QJsonDocument>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A user whose label is "1/5".
class StatusStream : public ConfiguredProgram {
protected:
    void SetUp() override {
        ConfiguredProgram::SetUp();
        leaveMeetingsBehind();
    }

    void startLoaded() {
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}, {u"text"_s, u"1/5"_s}}));
    }
};

/// Has the place of the running program, and counts how often it is asked.
class Telling : public QDBusVirtualObject {
public:
    explicit Telling(const QDBusConnection& bus)
        : m_bus(bus) {
        EXPECT_TRUE(m_bus.registerVirtualObject(u"/com/lumora/app"_s, this));
        EXPECT_TRUE(m_bus.registerService(u"com.lumora.app"_s));
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        ++asked;
        return bus.send(call.createReply(u"{\"text\":\"%1\"}"_s.arg(asked)));
    }

    void tell(const QString& signal) {
        m_bus.send(QDBusMessage::createSignal(u"/com/lumora/app"_s, u"com.lumora.app"_s, signal));
    }

    int asked = 0;

private:
    QDBusConnection m_bus;
};

/// A user whose program is one of the test's own.
class StatusStreamOfAnother : public testing::Test {
protected:
    ProgramHarness lumora;
    Telling telling{lumora.sessionBus().connect()};
};

} // namespace

TEST_F(StatusStream, SaysALineAtOnceAndOneForEveryChange) {
    startLoaded();
    FollowingProcess follower(lumora, u"text"_s);
    ASSERT_TRUE(follower.comesToSay({"1/5"}));
    prefer(u"none"_s);
    ASSERT_TRUE(follower.comesToSay({"1/5", ""}));
    // Nothing of this is seen in the label.
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    prefer(u"habits"_s);
    EXPECT_TRUE(follower.comesToSay({"1/5", "", "1/5"}));
}

TEST_F(StatusStream, OutlivesTheProgram) {
    startLoaded();
    FollowingProcess follower(lumora, u"polybar"_s);
    ASSERT_TRUE(follower.comesToSay({"1/5"}));
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    ASSERT_TRUE(follower.comesToSay({"1/5", ""}));
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
    lumora.start();
    ASSERT_TRUE(follower.comesToSay({"1/5", "", "1/5"}));
    lumora.program().kill();
    ASSERT_TRUE(follower.comesToSay({"1/5", "", "1/5", ""}));
    lumora.waitForEnd();
    startLoaded();
    EXPECT_TRUE(follower.comesToSay({"1/5", "", "1/5", "", "1/5"}));
}

TEST_F(StatusStream, WaitsForTheProgram) {
    FollowingProcess follower(lumora, u"i3blocks"_s);
    ASSERT_TRUE(follower.comesToSay({" "}));
    startLoaded();
    EXPECT_TRUE(follower.comesToSay({" ", "1/5"}));
}

TEST_F(StatusStream, TellsWaybarWhatToStyleItBy) {
    FollowingProcess follower(lumora, u"waybar"_s);
    ASSERT_TRUE(follower.comesToHave(1));
    const auto last = [&] { return QJsonDocument::fromJson(follower.lines().last()).object(); };
    EXPECT_EQ(last().value(u"text"_s), u""_s);
    EXPECT_EQ(last().value(u"alt"_s), u"stopped"_s);
    EXPECT_EQ(last().value(u"class"_s), QJsonArray{u"stopped"_s});
    EXPECT_EQ(last().value(u"tooltip"_s), u"Lumora is not running"_s);

    startLoaded();
    const QJsonArray fresh{u"habits"_s};
    ASSERT_TRUE(QTest::qWaitFor([&] { return last().value(u"class"_s) == fresh; }, patience));
    EXPECT_EQ(last().value(u"text"_s), u"1/5"_s);

    service.stop();
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 1);
    const QJsonArray stale{u"habits"_s, u"failed"_s, u"stale"_s};
    EXPECT_TRUE(QTest::qWaitFor([&] { return last().value(u"class"_s) == stale; }, patience));
    EXPECT_EQ(last().value(u"text"_s), u"1/5"_s);
}

TEST_F(StatusStream, EndsWhenNobodyReadsItAnyMore) {
    startLoaded();
    for (const QString& format : {u"text"_s, u"waybar"_s}) {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        const auto process = lumora.makeProcess();
        process->setArguments({u"status"_s, u"--follow"_s, u"--format"_s, format});
        process->setStandardOutputFile(u"/proc/self/fd/%1"_s.arg(ends[1]));
        process->start();
        ASSERT_TRUE(process->waitForStarted(patience));
        close(ends[1]);
        pollfd line{.fd = ends[0], .events = POLLIN, .revents = 0};
        EXPECT_EQ(poll(&line, 1, patience), 1);
        EXPECT_EQ(line.revents, POLLIN);
        // Nothing changes, so nothing is written that could fail.
        close(ends[0]);
        const auto outcome = ProgramHarness::finish(*process);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.err, "");
    }
}

TEST_F(StatusStream, ALineThatCannotBeWrittenIsAFailure) {
    const auto process = lumora.makeProcess();
    process->setArguments({u"status"_s, u"--follow"_s});
    process->setStandardOutputFile(u"/dev/full"_s);
    process->start();
    const auto outcome = ProgramHarness::finish(*process);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "lumora: The answer could not be written: No space left on device\n");
}

TEST_F(StatusStream, EndsWithTheSession) {
    FollowingProcess follower(lumora, u"text"_s);
    ASSERT_TRUE(follower.comesToSay({""}));
    lumora.sessionBus().kill();
    const auto outcome = ProgramHarness::finish(follower.process());
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.err, "lumora: Lumora is not running\n");
}

TEST_F(StatusStreamOfAnother, AsksOnlyAfterChangesThatItsFormatShows) {
    FollowingProcess label(lumora, u"text"_s);
    ASSERT_TRUE(label.comesToSay({"1"}));
    for (int i = 0; i < 20; ++i)
        telling.tell(u"DetailsChanged"_s);
    telling.tell(u"LabelChanged"_s);
    ASSERT_TRUE(label.comesToSay({"1", "2"}));
    EXPECT_EQ(telling.asked, 2);
}

TEST_F(StatusStreamOfAnother, AsksAfterEveryChangeWhereItsFormatShowsAll) {
    FollowingProcess all(lumora, u"json"_s);
    ASSERT_TRUE(all.comesToHave(1));
    telling.tell(u"DetailsChanged"_s);
    ASSERT_TRUE(all.comesToHave(2));
    telling.tell(u"LabelChanged"_s);
    ASSERT_TRUE(all.comesToHave(3));
    EXPECT_EQ(telling.asked, 3);
}

TEST_F(StatusStreamOfAnother, CatchesUpWithManyChangesAtOnce) {
    FollowingProcess label(lumora, u"text"_s);
    ASSERT_TRUE(label.comesToSay({"1"}));
    for (int i = 0; i < 100; ++i)
        telling.tell(u"LabelChanged"_s);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return telling.asked > 1 && label.lines().last() == QByteArray::number(telling.asked);
        },
        patience));
    EXPECT_LE(telling.asked, 101);
}
