#include "companion/watching/PathWatch.h"

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

constexpr std::chrono::milliseconds settling{20};

class PathWatches : public testing::Test {
protected:
    QTemporaryDir folder;
    PathWatch watch{settling};
    QSignalSpy happened{&watch, &PathWatch::happened};

    QString path(const QString& name) const { return folder.filePath(name); }

    void append(const QString& name, const QByteArray& bytes = "1") const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QFile::Append));
        file.write(bytes);
    }

    testing::AssertionResult tells() {
        const bool told = happened.count() > 0 || happened.wait(patience);
        happened.clear();
        return told ? testing::AssertionSuccess() : testing::AssertionFailure();
    }

    testing::AssertionResult isSilent() {
        outlastTimers(3 * settling);
        return happened.count() == 0 ? testing::AssertionSuccess() : testing::AssertionFailure();
    }
};

} // namespace

TEST_F(PathWatches, TellWhatIsWrittenIntoTheFilesOfAFolder) {
    append(u"a"_s);
    watch.watch({}, {folder.path()});
    append(u"a"_s);
    EXPECT_TRUE(tells());
    EXPECT_TRUE(QFile::remove(path(u"a"_s)));
    EXPECT_TRUE(tells());
}

TEST_F(PathWatches, LeaveTheFilesOfAFolderAloneThatIsOnlyAPlace) {
    append(u"a"_s);
    append(u"b"_s);
    watch.watch({path(u"a"_s), folder.path()});
    append(u"b"_s);
    EXPECT_TRUE(isSilent());
    append(u"a"_s);
    EXPECT_TRUE(tells());
    append(u"c"_s);
    EXPECT_TRUE(tells());
}

TEST_F(PathWatches, TellOnceOfAllThatHappensWithinAMoment) {
    watch.watch({}, {folder.path()});
    for (int i = 0; i < 500; ++i)
        append(QString::number(i));
    EXPECT_TRUE(tells());
    EXPECT_TRUE(isSilent());
}

TEST_F(PathWatches, ForgetWhatTheyWatchedBefore) {
    append(u"a"_s);
    watch.watch({path(u"a"_s)});
    watch.watch({});
    append(u"a"_s);
    EXPECT_TRUE(isSilent());
}

TEST_F(PathWatches, FindAFolderAgainThatHasBeenReplaced) {
    ASSERT_TRUE(QDir().mkdir(path(u"x"_s)));
    watch.watch({}, {path(u"x"_s)});
    ASSERT_TRUE(QDir().rmdir(path(u"x"_s)));
    EXPECT_TRUE(tells());
    watch.watch({}, {path(u"x"_s)});
    ASSERT_TRUE(QDir().mkdir(path(u"x"_s)));
    EXPECT_TRUE(tells());
    watch.watch({}, {path(u"x"_s)});
    append(u"x/a"_s);
    EXPECT_TRUE(tells());
}
