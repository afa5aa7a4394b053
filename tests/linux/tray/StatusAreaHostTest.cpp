#include "linux/tray/StatusAreaHost.h"

#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

using tests::patience;

namespace {

class StatusAreaHostTest : public testing::Test {
protected:
    tests::PrivateBus m_bus;
    QDBusConnection m_watcher = m_bus.connect();
    StatusAreaHost m_host{
        m_bus.connect(), [](uint process) { return u"process %1"_s.arg(process); }};
    QSignalSpy m_changed{&m_host, &StatusAreaHost::changed};
    const QString m_self = u"process %1"_s.arg(QCoreApplication::applicationPid());
};

TEST_F(StatusAreaHostTest, NamesTheProcessBehindAConnection) {
    EXPECT_EQ(m_host.process(), QString());
    m_host.look(m_watcher.baseService());
    ASSERT_TRUE(m_changed.wait(patience));
    EXPECT_EQ(m_host.process(), m_self);
}

TEST_F(StatusAreaHostTest, ForgetsAHostThatIsGone) {
    m_host.look(m_watcher.baseService());
    ASSERT_TRUE(m_changed.wait(patience));
    m_host.look({});
    EXPECT_EQ(m_host.process(), QString());
    EXPECT_EQ(m_changed.size(), 2);
    m_host.look(m_watcher.baseService());
    ASSERT_TRUE(m_changed.wait(patience));
    m_host.look(u":1.4711"_s); // which the bus does not know
    ASSERT_TRUE(m_changed.wait(patience));
    EXPECT_EQ(m_host.process(), QString());
}

TEST_F(StatusAreaHostTest, BelievesTheLastQuestionOnly) {
    m_host.look(m_watcher.baseService());
    m_host.look(u":1.4711"_s);
    m_host.look(m_watcher.baseService());
    ASSERT_TRUE(m_changed.wait(patience));
    EXPECT_EQ(m_host.process(), m_self);
    EXPECT_EQ(m_changed.size(), 1);
}

TEST(ProcessName, IsTheKernels) {
    EXPECT_TRUE(processName(uint(QCoreApplication::applicationPid())).startsWith(u"lumora_linux"));
    EXPECT_EQ(processName(0), QString());
}

} // namespace
} // namespace lumora
