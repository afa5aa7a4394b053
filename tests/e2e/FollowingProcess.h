#pragma once

#include "support/Patience.h"
#include "support/ProgramHarness.h"

#include <QTest>

#include <memory>

namespace lumora::tests {

/// `lumora status --follow` as a bar runs it.
class FollowingProcess {
public:
    FollowingProcess(const ProgramHarness& user, const QString& format)
        : m_process(user.makeProcess()) {
        m_process->setArguments(
            {QStringLiteral("status"), QStringLiteral("--follow"), QStringLiteral("--format"),
             format});
        m_process->start();
        EXPECT_TRUE(m_process->waitForStarted(patience));
    }

    ~FollowingProcess() {
        m_process->terminate();
        m_process->waitForFinished(patience);
    }

    FollowingProcess(const FollowingProcess&) = delete;
    FollowingProcess& operator=(const FollowingProcess&) = delete;

    /// All lines so far.
    QByteArrayList lines() {
        m_out += m_process->readAllStandardOutput();
        QByteArrayList lines = m_out.split('\n');
        EXPECT_EQ(lines.takeLast(), ""); // each is ended
        return lines;
    }

    /// Waits until there are these lines and no others.
    testing::AssertionResult comesToSay(const QByteArrayList& expected) {
        if (QTest::qWaitFor([&] { return lines() == expected; }, patience))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << m_out.toStdString();
    }

    /// Waits for as many lines.
    bool comesToHave(qsizetype count) {
        return QTest::qWaitFor([&] { return lines().size() >= count; }, patience);
    }

    QProcess& process() { return *m_process; }

private:
    std::unique_ptr<QProcess> m_process;
    QByteArray m_out;
};

} // namespace lumora::tests
