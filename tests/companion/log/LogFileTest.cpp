#include "companion/log/LogFile.h"

#include "support/Patience.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace lumora::tests;
using namespace std::chrono_literals;

namespace {

class LogFiles : public testing::Test {
protected:
    QTemporaryDir folder;
    const QString path = folder.filePath(u"new/folder/service.log"_s);
    const LogEntry entry{
        std::chrono::sys_days(2025y / 3 / 4), 0h, LogEntry::Kind::Habit, u"read"_s, 1};

    /// Writes the file as an editor does.
    void write(const QByteArray& bytes) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
    }

    QByteArray contents() const {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    static qint64 timesRead(LogFile& log) {
        return log.totals().habits.value(u"read"_s).value(QDate(2025, 3, 4));
    }
};

} // namespace

TEST_F(LogFiles, BeginWithTheFirstEntry) {
    LogFile log(path, 0h);
    EXPECT_EQ(timesRead(log), 0);
    EXPECT_EQ(log.error(), std::nullopt);
    ASSERT_TRUE(log.append(entry));
    EXPECT_EQ(timesRead(log), 1);
    EXPECT_EQ(contents(), logLine(entry));
    EXPECT_EQ(
        QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther),
        QFile::Permissions());
}

TEST_F(LogFiles, AreReadAgainWhenSomebodyChangesThem) {
    LogFile log(path, 0h);
    ASSERT_TRUE(log.append(entry));
    EXPECT_EQ(timesRead(log), 1);
    QSignalSpy changed(&log, &LogFile::changed);
    write(logLine(entry) + logLine(entry) + "half a li");
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(timesRead(log), 2);
    EXPECT_EQ(log.skipped(), 1);
    // What was cut off there is no part of the next line.
    ASSERT_TRUE(log.append(entry));
    EXPECT_EQ(timesRead(log), 3);
    EXPECT_TRUE(contents().endsWith("half a li\n" + logLine(entry)));
}

TEST_F(LogFiles, TellNobodyOfTheirOwnEntries) {
    LogFile log(path, 0h);
    ASSERT_TRUE(log.append(entry));
    EXPECT_EQ(timesRead(log), 1);
    const QSignalSpy changed(&log, &LogFile::changed);
    ASSERT_TRUE(log.append(entry));
    EXPECT_EQ(timesRead(log), 2);
    outlastTimers(2 * FileWatch::settlingTime);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(LogFiles, StayAsTheyWereWhereTheyCannotBeRead) {
    LogFile log(path, 0h);
    ASSERT_TRUE(log.append(entry));
    EXPECT_EQ(timesRead(log), 1);
    QSignalSpy changed(&log, &LogFile::changed);
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkdir(path));
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(timesRead(log), 1);
    ASSERT_TRUE(log.error());
    EXPECT_TRUE(log.error()->contains(u"service.log: "_s)) << qPrintable(*log.error());
    EXPECT_FALSE(log.append(entry));
}
