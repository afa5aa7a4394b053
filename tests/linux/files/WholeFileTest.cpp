#include "linux/files/WholeFile.h"

#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"
#include "support/SmallDisk.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto mode = QFile::ReadOwner | QFile::WriteOwner;

/// What happens instead of syncing a file; empty: it is synced.
std::function<int()> insteadOfSync;

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : "(no file)";
}

/// Why the file at `path` is not read.
ReadFailure failureOf(const QString& path) {
    const auto bytes = readFile(path);
    return bytes ? ReadFailure{true, u"(it was read)"_s} : bytes.error();
}

/// Hears whether somebody opens a file.
class OpeningListener {
public:
    explicit OpeningListener(const QString& path) {
        EXPECT_GE(inotify_add_watch(m_queue, QFile::encodeName(path).constData(), IN_OPEN), 0);
    }

    ~OpeningListener() { close(m_queue); }

    OpeningListener(const OpeningListener&) = delete;
    OpeningListener& operator=(const OpeningListener&) = delete;

    bool heard() const {
        std::array<char, 4096> events{};
        return read(m_queue, events.data(), events.size()) > 0;
    }

private:
    int m_queue = inotify_init1(IN_NONBLOCK);
};

class WholeFileTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(replaceFile(path, before, mode)); }

    void TearDown() override { insteadOfSync = {}; }

    QStringList files() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(u"file"_s);
    const QByteArray before = "what was there before, rather longer than what comes";
    const QByteArray after = QByteArray("something new\n").repeated(7);
};

} // namespace

/// The system's own, for the program under test.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): it takes the system's place
extern "C" int fsync(int descriptor) {
    return insteadOfSync ? insteadOfSync() : int(syscall(SYS_fsync, descriptor));
}

TEST_F(WholeFileTest, ReplacesContentAndPermissions) {
    EXPECT_EQ(contents(path), before);
    constexpr auto other = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    ASSERT_TRUE(replaceFile(path, after, other));
    EXPECT_EQ(contents(path), after);
    EXPECT_EQ(QFile::permissions(path) & QFile::Permissions(0x7077), other);
    EXPECT_EQ(files(), QStringList(u"file"_s));
}

TEST_F(WholeFileTest, ALinkGivesWayAndWhatItLeadsToStays) {
    const QString link = folder.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(path, link));
    ASSERT_TRUE(replaceFile(link, after, mode));
    EXPECT_FALSE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contents(link), after);
    EXPECT_EQ(contents(path), before);
}

TEST_F(WholeFileTest, AWriteThatIsCutAtAnyByteLeavesTheOldFile) {
    for (rlim_t cut = 0; cut < rlim_t(after.size()); ++cut) {
        const FileSizeLimit limit(cut);
        const auto replaced = replaceFile(path, after, mode);
        ASSERT_FALSE(replaced) << cut;
        EXPECT_EQ(replaced.error(), folder.path() + u": File too large"_s);
        ASSERT_EQ(contents(path), before) << cut;
        ASSERT_EQ(files(), QStringList(u"file"_s)) << cut;
    }
    const FileSizeLimit limit(rlim_t(after.size()));
    ASSERT_TRUE(replaceFile(path, after, mode));
    EXPECT_EQ(contents(path), after);
}

TEST_F(WholeFileTest, ACrashAtAnyByteLeavesTheOldFile) {
    for (rlim_t cut = 0; cut <= rlim_t(after.size()); ++cut) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // Nobody ignores the signal here: it ends the process in the middle of its writing.
            const rlimit noCore{0, 0};
            const rlimit limit{cut, RLIM_INFINITY};
            setrlimit(RLIMIT_CORE, &noCore);
            setrlimit(RLIMIT_FSIZE, &limit);
            std::signal(SIGXFSZ, SIG_DFL);
            _exit(replaceFile(path, after, mode) ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        const bool isEnough = cut == rlim_t(after.size());
        ASSERT_EQ(WIFSIGNALED(status), !isEnough) << cut;
        ASSERT_EQ(contents(path), isEnough ? after : before) << cut;
    }
}

TEST_F(WholeFileTest, AFullDiskLeavesTheOldFile) {
    const SmallDisk disk(4);
    if (!disk.isThere())
        GTEST_SKIP() << "no disk of its own: " << disk.whyNot();
    const QString onDisk = disk.filePath(u"file"_s);
    ASSERT_TRUE(replaceFile(onDisk, before, mode));
    disk.fill();
    const auto replaced = replaceFile(onDisk, after, mode);
    ASSERT_FALSE(replaced);
    EXPECT_TRUE(replaced.error().endsWith(u": No space left on device"_s))
        << replaced.error().toStdString();
    EXPECT_EQ(contents(onDisk), before);
    disk.clear();
    EXPECT_TRUE(replaceFile(onDisk, after, mode));
    EXPECT_EQ(contents(onDisk), after);
}

TEST_F(WholeFileTest, OnlyWhatIsOnTheDiskTakesTheOldFilesPlace) {
    QByteArray whileSyncing;
    insteadOfSync = [&] {
        whileSyncing = contents(path);
        errno = EIO;
        return -1;
    };
    const auto replaced = replaceFile(path, after, mode);
    ASSERT_FALSE(replaced);
    EXPECT_EQ(replaced.error(), folder.path() + u": Input/output error"_s);
    EXPECT_EQ(whileSyncing, before);
    EXPECT_EQ(contents(path), before);
    EXPECT_EQ(files(), QStringList(u"file"_s));
}

TEST_F(WholeFileTest, WhatCannotBeReplacedStaysAndNothingIsLeftBehind) {
    const QString inTheWay = folder.filePath(u"folder"_s);
    ASSERT_TRUE(QDir().mkdir(inTheWay));
    const auto replaced = replaceFile(inTheWay, after, mode);
    ASSERT_FALSE(replaced);
    EXPECT_EQ(replaced.error(), inTheWay + u": Is a directory"_s);
    EXPECT_TRUE(QFileInfo(inTheWay).isDir());
    EXPECT_EQ(files(), QStringList(u"file"_s));

    const QString nowhere = folder.filePath(u"nowhere"_s);
    const auto lost = replaceFile(nowhere + u"/file"_s, after, mode);
    ASSERT_FALSE(lost);
    EXPECT_EQ(lost.error(), nowhere + u": No such file or directory"_s);
}

TEST_F(WholeFileTest, TooMuchToBeReadAgainIsNotWritten) {
    const auto replaced = replaceFile(path, QByteArray(largestWholeFile + 1, 'x'), mode);
    ASSERT_FALSE(replaced);
    EXPECT_EQ(replaced.error(), path + u": File too large"_s);
    EXPECT_EQ(contents(path), before);
}

TEST_F(WholeFileTest, ReadsUpToTheLargestSize) {
    EXPECT_EQ(readFile(path), before);
    ASSERT_TRUE(replaceFile(path, {}, mode));
    EXPECT_EQ(readFile(path), QByteArray());
    const QByteArray large(largestWholeFile, 'x');
    ASSERT_TRUE(replaceFile(path, large, mode));
    EXPECT_EQ(readFile(path), large);
    ASSERT_TRUE(QFile::link(path, folder.filePath(u"link"_s)));
    EXPECT_EQ(readFile(folder.filePath(u"link"_s)), large);
}

TEST_F(WholeFileTest, TellsWhatIsAbsentFromWhatCannotBeRead) {
    const QString nothing = folder.filePath(u"nothing"_s);
    EXPECT_EQ(failureOf(nothing), (ReadFailure{true, nothing + u": No such file or directory"_s}));
    const QString below = path + u"/below"_s;
    EXPECT_EQ(failureOf(below), (ReadFailure{true, below + u": Not a directory"_s}));
    const QString nowhere = folder.filePath(u"nowhere"_s);
    ASSERT_TRUE(QFile::link(nothing, nowhere));
    EXPECT_TRUE(failureOf(nowhere).isAbsent);
    const QString circle = folder.filePath(u"circle"_s);
    ASSERT_TRUE(QFile::link(circle, circle));
    EXPECT_EQ(
        failureOf(circle), (ReadFailure{false, circle + u": Too many levels of symbolic links"_s}));
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x7777)));
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    const OrdinaryUser user;
    EXPECT_EQ(failureOf(path), (ReadFailure{false, path + u": Permission denied"_s}));
}

TEST_F(WholeFileTest, OpensNothingThatItDoesNotRead) {
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const OpeningListener ofPipe(pipe);
    EXPECT_EQ(failureOf(pipe), (ReadFailure{false, pipe + u": Not a regular file"_s}));
    EXPECT_FALSE(ofPipe.heard());

    const OpeningListener ofFolder(folder.path());
    EXPECT_EQ(
        failureOf(folder.path()), (ReadFailure{false, folder.path() + u": Is a directory"_s}));
    EXPECT_FALSE(ofFolder.heard());

    QFile large(path);
    ASSERT_TRUE(large.resize(100 * largestWholeFile));
    const OpeningListener ofLarge(path);
    EXPECT_EQ(failureOf(path), (ReadFailure{false, path + u": File too large"_s}));
    EXPECT_FALSE(ofLarge.heard());
    ASSERT_TRUE(large.resize(1));
    EXPECT_FALSE(ofLarge.heard());
    EXPECT_TRUE(readFile(path));
    EXPECT_TRUE(ofLarge.heard());
}

TEST_F(WholeFileTest, IsReadUpToWhatTheCallerTakes) {
    ASSERT_TRUE(replaceFile(path, "0123456789", mode));
    EXPECT_EQ(readFile(path, 10), "0123456789");
    EXPECT_FALSE(readFile(path, 9));
}

TEST(WholeFile, AFileIsReadToItsEndHoweverLongItWasBefore) {
    // The system says of its own files that they are empty, as of one that grows while it is read.
    const auto bytes = readFile(u"/proc/self/status"_s);
    ASSERT_TRUE(bytes);
    EXPECT_TRUE(bytes->startsWith("Name:"));
    EXPECT_TRUE(bytes->contains("voluntary_ctxt_switches"));
}
