#include "e2e/ConfiguredProgram.h"
#include "support/BusProbe.h"
#include "support/PrivateMemory.h"

#include <QDir>

#include <sys/resource.h>

#include <csignal>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What a machine does to a program that runs for weeks.
class SystemFaults : public ConfiguredProgram {
protected:
    void SetUp() override {
        ConfiguredProgram::SetUp();
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    }

    pid_t process() { return pid_t(lumora.program().processId()); }

    int refresh() { return lumora.run({u"refresh"_s}).exitCode; }

    void expectToEndWell() {
        EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
        EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
    }
};

} // namespace

TEST_F(SystemFaults, WithoutFileDescriptorsNothingIsFetchedAndNothingLost) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers need descriptors";
#endif
    const QDir descriptors(u"/proc/%1/fd"_s.arg(process()));
    rlimit before{};
    ASSERT_EQ(prlimit(process(), RLIMIT_NOFILE, nullptr, &before), 0);
    rlimit none = before;
    none.rlim_cur = 3; // fewer than are open already
    ASSERT_EQ(prlimit(process(), RLIMIT_NOFILE, &none, nullptr), 0);
    EXPECT_EQ(refresh(), 1);
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));
    ASSERT_EQ(prlimit(process(), RLIMIT_NOFILE, &before, nullptr), 0);
    // Only somebody who tries finds out that there are some again.
    EXPECT_TRUE(QTest::qWaitFor([this] { return refresh() == 0; }, patience));
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    expectToEndWell();
}

TEST_F(SystemFaults, AStopForAWhileIsNoMoreThanThat) {
    ASSERT_EQ(kill(process(), SIGSTOP), 0);
    ASSERT_EQ(kill(process(), SIGCONT), 0);
    EXPECT_EQ(refresh(), 0);
    expectToEndWell();
}

TEST_F(SystemFaults, AThousandOpeningsLeaveNothingBehind) {
    BusProbe probe(lumora.sessionBus().connect(), lumora.uniqueName());
    const auto press = [&probe] {
        probe.call(
            u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, u"Activate"_s, {0, 0});
    };
    for (int count = 0; count < 40; ++count)
        press();
    const qint64 before = privateMemory(process());
    for (int count = 0; count < 2000; ++count)
        press();
    EXPECT_EQ(refresh(), 0);
    if (memoryIsMeasurable) {
        EXPECT_LT(privateMemory(process()), before + 2 * 1024);
    }
    expectToEndWell();
}

TEST_F(SystemFaults, AThousandCommandsAreAllAnswered) {
    QDBusConnection client = lumora.sessionBus().connect();
    constexpr int atOnce = 100; // of those that the bus lets wait for an answer
    for (int turn = 0; turn < 10; ++turn) {
        QList<QDBusPendingCall> calls;
        for (int count = 0; count < atOnce; ++count)
            calls += client.asyncCall(QDBusMessage::createMethodCall(
                u"com.lumora.app"_s, u"/com/lumora/app"_s, u"com.lumora.app"_s, u"Status"_s));
        for (QDBusPendingCall& call : calls) {
            call.waitForFinished();
            EXPECT_FALSE(call.isError()) << call.error().message().toStdString();
        }
    }
    expectToEndWell();
}
