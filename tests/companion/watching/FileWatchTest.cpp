#include "companion/watching/FileWatch.h"

#include "support/Patience.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace lumora::tests;

namespace {

class FileWatches : public testing::Test {
protected:
    QTemporaryDir folder;

    QString path(const QString& name) const { return folder.filePath(name); }

    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
    }

    /// Whether `change` is told of, once it has been acknowledged and done.
    static testing::AssertionResult tellsOf(FileWatch& watch, const std::function<void()>& change) {
        watch.acknowledge();
        QSignalSpy changed(&watch, &FileWatch::changed);
        change();
        return changed.count() > 0 || changed.wait(patience) ? testing::AssertionSuccess()
                                                             : testing::AssertionFailure();
    }
};

} // namespace

TEST_F(FileWatches, TellWhenAFileComesChangesAndGoes) {
    FileWatch watch(path(u"a"_s));
    EXPECT_TRUE(tellsOf(watch, [&] { write(u"a"_s, "1"); }));
    EXPECT_TRUE(tellsOf(watch, [&] { write(u"a"_s, "12"); }));
    EXPECT_TRUE(tellsOf(watch, [&] {
        write(u"b"_s, "34");
        ASSERT_EQ(std::rename(qPrintable(path(u"b"_s)), qPrintable(path(u"a"_s))), 0);
    }));
    EXPECT_TRUE(tellsOf(watch, [&] { write(u"a"_s, "567"); }));
    EXPECT_TRUE(tellsOf(watch, [&] { QFile::remove(path(u"a"_s)); }));
}

TEST_F(FileWatches, TellWhenSomebodyElseMayReadAFile) {
    write(u"a"_s, "1");
    FileWatch watch(path(u"a"_s));
    EXPECT_TRUE(tellsOf(watch, [&] { QFile::setPermissions(path(u"a"_s), QFile::ReadOwner); }));
}

TEST_F(FileWatches, WaitForFoldersThatAreNotThereYet) {
    FileWatch watch(path(u"x/y/a"_s));
    EXPECT_FALSE(watch.hasChanged());
    EXPECT_TRUE(tellsOf(watch, [&] {
        ASSERT_TRUE(QDir().mkpath(path(u"x/y"_s)));
        write(u"x/y/a"_s, "1");
    }));
}

TEST_F(FileWatches, FollowLinks) {
    ASSERT_TRUE(QDir().mkdir(path(u"far"_s)));
    write(u"far/a"_s, "1");
    ASSERT_TRUE(QFile::link(path(u"far/a"_s), path(u"a"_s)));
    FileWatch watch(path(u"a"_s));
    EXPECT_TRUE(tellsOf(watch, [&] { write(u"far/a"_s, "12"); }));
    EXPECT_TRUE(tellsOf(watch, [&] {
        write(u"far/b"_s, "345");
        ASSERT_EQ(std::rename(qPrintable(path(u"far/b"_s)), qPrintable(path(u"far/a"_s))), 0);
    }));
}

TEST_F(FileWatches, AreSilentAboutOtherFilesAndWhatIsKnown) {
    write(u"a"_s, "1");
    FileWatch watch(path(u"a"_s));
    const QSignalSpy changed(&watch, &FileWatch::changed);
    write(u"b"_s, "1");
    write(u"a"_s, "12");
    EXPECT_TRUE(watch.hasChanged());
    watch.acknowledge();
    EXPECT_FALSE(watch.hasChanged());
    outlastTimers(2 * FileWatch::settlingTime);
    EXPECT_EQ(changed.count(), 0);
}
