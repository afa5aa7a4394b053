#include "linux/files/AppendedFile.h"

#include "support/FileSizeLimit.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;

namespace {

class AppendedFiles : public testing::Test {
protected:
    QTemporaryDir folder;

    QString path(const QString& name) const { return folder.filePath(name); }

    QByteArray contents(const QString& name) const {
        QFile file(path(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

TEST_F(AppendedFiles, AreMadeForTheUserAloneWithTheirFolders) {
    ASSERT_TRUE(appendLines(path(u"a/b/c"_s), "one\n"));
    ASSERT_TRUE(appendLines(path(u"a/b/c"_s), "two\nthree\n"));
    EXPECT_EQ(contents(u"a/b/c"_s), "one\ntwo\nthree\n");

    struct stat status{};

    for (const auto& [name, mode] : {std::pair(u"a/b/c"_s, 0600U), {u"a/b"_s, 0700U}}) {
        ASSERT_EQ(stat(qPrintable(path(name)), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, mode);
    }
}

TEST_F(AppendedFiles, HaveEachLineToItself) {
    QFile file(path(u"a"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("not ended");
    file.close();
    ASSERT_TRUE(appendLines(path(u"a"_s), "one\n"));
    EXPECT_EQ(contents(u"a"_s), "not ended\none\n");
}

TEST_F(AppendedFiles, AreWrittenThroughLinks) {
    ASSERT_TRUE(QFile::link(path(u"far"_s), path(u"a"_s)));
    ASSERT_TRUE(appendLines(path(u"a"_s), "one\n"));
    EXPECT_EQ(contents(u"far"_s), "one\n");
    EXPECT_TRUE(QFileInfo(path(u"a"_s)).isSymLink());
}

TEST_F(AppendedFiles, SayWhyNotWithoutWaiting) {
    ASSERT_EQ(mkfifo(qPrintable(path(u"pipe"_s)), 0600), 0);
    EXPECT_EQ(
        appendLines(path(u"pipe"_s), "one\n").error(), path(u"pipe"_s) + u": Invalid argument"_s);
    EXPECT_EQ(appendLines(folder.path(), "one\n").error(), folder.path() + u": Is a directory"_s);
    ASSERT_TRUE(appendLines(path(u"file"_s), "one\n"));
    EXPECT_FALSE(appendLines(path(u"file/below"_s), "one\n"));
}

TEST_F(AppendedFiles, EndWhatAFullDiskTookHalfOf) {
    ASSERT_TRUE(appendLines(path(u"a"_s), "one\n"));
    {
        const tests::FileSizeLimit limit(6);
        EXPECT_EQ(
            appendLines(path(u"a"_s), "two\n").error(),
            path(u"a"_s) + u": No space left on device"_s);
    }
    EXPECT_EQ(contents(u"a"_s), "one\ntw");
    ASSERT_TRUE(appendLines(path(u"a"_s), "three\n"));
    EXPECT_EQ(contents(u"a"_s), "one\ntw\nthree\n");
}
