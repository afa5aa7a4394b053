#include "linux/preferences/ConfFileFixture.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"
#include "support/SmallDisk.h"

#include <QSignalSpy>

#include <ctime>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What the program says on the standard error, as long as it lives. One at a time.
class Said {
public:
    Said() {
        said().clear();
        m_before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { said() += text; });
    }

    ~Said() { qInstallMessageHandler(m_before); }

    Said(const Said&) = delete;
    Said& operator=(const Said&) = delete;

    const QStringList& lines() const { return said(); }

private:
    static QStringList& said() {
        static QStringList lines;
        return lines;
    }

    QtMessageHandler m_before;
};

/// Something in the file's place that is not read.
struct Obstacle {
    const char* name;
    const char* command; ///< makes it at $F
    const char* message; ///< the system's
};

using ConfFileTrouble = ConfFileFixture;

class ConfFileObstacle : public ConfFileFixture, public testing::WithParamInterface<Obstacle> {};

} // namespace

TEST_F(ConfFileTrouble, ACorruptFileActsAsEmptyAndIsNotTouchedByReading) {
    ConfFilePreferences store(path);
    write(path, "[General]\nrefreshMinutes=5\n\xFF\xFE\n");
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_EQ(contents(path), "[General]\nrefreshMinutes=5\n\xFF\xFE\n");
    EXPECT_EQ(filesInFolder(), QStringList{u"lumora.conf"_s});
}

TEST_F(ConfFileTrouble, WritingOverACorruptFileKeepsACopyOfIt) {
    ConfFilePreferences store(path);
    write(path, "first wreck");
    ASSERT_TRUE(store.setValue(u"refreshMinutes"_s, u"5"_s));
    EXPECT_EQ(contents(path), "[General]\nrefreshMinutes=5\n");
    EXPECT_EQ(contents(path + u".corrupt"_s), "first wreck");

    write(path, "second wreck");
    ASSERT_TRUE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    EXPECT_EQ(contents(path + u".corrupt"_s), "first wreck");
    EXPECT_EQ(contents(path + u".corrupt.2"_s), "second wreck");
}

TEST_F(ConfFileTrouble, TheSameWreckIsKeptOnce) {
    ConfFilePreferences store(path);
    write(path, "a wreck");
    // There is room for the copy, but not for the line that was to be written after it.
    for (const auto& minutes : {u"5000000000"_s, u"6000000000"_s}) {
        const FileSizeLimit littleRoom(10);
        EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, minutes));
    }
    EXPECT_EQ(contents(path), "a wreck");
    EXPECT_EQ(filesInFolder(), (QStringList{u"lumora.conf"_s, u"lumora.conf.corrupt"_s}));
}

TEST_F(ConfFileTrouble, WhatCannotBeReadActsAsEmptyAndIsNotWrittenOver) {
    // The file is hidden by its mode, its folder lets everybody write.
    const QFile::Permissions open(0x7777);
    for (const QString& folder : {home.path(), home.filePath(u"config"_s)}) {
        QDir().mkpath(folder);
        ASSERT_TRUE(QFile::setPermissions(folder, open));
    }
    ConfFilePreferences store(path);
    ASSERT_TRUE(QFile::setPermissions(QFileInfo(path).path(), open));
    write(path, "[General]\nrefreshMinutes=5\n");
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    {
        const OrdinaryUser user;
        EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
        EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    }
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    EXPECT_EQ(contents(path), "[General]\nrefreshMinutes=5\n");
    EXPECT_EQ(filesInFolder(), QStringList{u"lumora.conf"_s});
}

TEST_F(ConfFileTrouble, AFolderThatCannotBeMadeFailsWritingOnly) {
    write(home.filePath(u"config"_s), "a file in the way");
    ConfFilePreferences store(path);
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
}

TEST_F(ConfFileTrouble, WhereNothingCanBeWrittenTheOldFileStays) {
    ConfFilePreferences store(path);
    const QByteArray before = "# mine\n[General]\nrefreshMinutes=5\n";
    write(path, before);
    {
        const FileSizeLimit noRoom;
        EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    }
    EXPECT_EQ(contents(path), before);
    EXPECT_EQ(filesInFolder(), QStringList{u"lumora.conf"_s});
}

TEST_F(ConfFileTrouble, AFullDiskLeavesTheOldFile) {
    const SmallDisk disk(4);
    if (!disk.isThere())
        GTEST_SKIP() << "no disk of its own: " << disk.whyNot();
    const QString onDisk = disk.filePath(u"lumora.conf"_s);
    const QByteArray before = "[General]\nrefreshMinutes=5\n";
    write(onDisk, before);
    ConfFilePreferences store(onDisk);
    disk.fill();
    EXPECT_FALSE(store.setValue(u"section.collapsed.events"_s, u"true"_s));
    EXPECT_EQ(contents(onDisk), before);
    disk.clear();
    EXPECT_TRUE(store.setValue(u"section.collapsed.events"_s, u"true"_s));
    EXPECT_EQ(contents(onDisk), before + "section.collapsed.events=true\n");
}

TEST_F(ConfFileTrouble, WithoutRoomForACopyACorruptFileStays) {
    ConfFilePreferences store(path);
    write(path, "a wreck");
    {
        const FileSizeLimit noRoom(3);
        EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    }
    EXPECT_EQ(contents(path), "a wreck");
    EXPECT_EQ(filesInFolder(), QStringList{u"lumora.conf"_s});
}

TEST_F(ConfFileTrouble, AFileOfTheLargestSizeIsReadButNoKeyIsAddedToIt) {
    ConfFilePreferences store(path);
    const QByteArray beginning = "[General]\nrefreshMinutes=5\n#";
    const QByteArray full = beginning + QByteArray(largestWholeFile - beginning.size(), 'x');
    write(path, full);
    EXPECT_EQ(store.value(u"refreshMinutes"_s), u"5"_s);
    EXPECT_TRUE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    EXPECT_FALSE(store.setValue(u"notifyBeforeMeetings"_s, u"false"_s));
    EXPECT_EQ(store.value(u"refreshMinutes"_s), u"6"_s);
}

TEST_F(ConfFileTrouble, ALargeFileIsTakenApartOnce) {
    const QByteArray line = "k=v\n";
    ConfFilePreferences store(path);
    write(path, line.repeated(largestWholeFile / line.size()));
    const std::clock_t start = std::clock(); // of the processor, which others may keep busy
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    const std::clock_t first = std::clock() - start;
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(store.value(u"k"_s), u"v"_s);
    EXPECT_LT(std::clock() - start, 10 * first);
}

TEST_P(ConfFileObstacle, ActsAsEmptyAndStaysAndIsToldOfOnce) {
    const Said said;
    shell(u"mkdir -p \"$(dirname \"$F\")\"; "_s + QString::fromLatin1(GetParam().command));
    ConfFilePreferences store(path);
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    const QFileInfo before(path);
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"7"_s));
    EXPECT_EQ(QFileInfo(path).size(), before.size());
    EXPECT_EQ(QFileInfo(path).isSymLink(), before.isSymLink());
    EXPECT_EQ(QFileInfo(path).isDir(), before.isDir());
    EXPECT_EQ(
        said.lines(), QStringList(u"lumora: all preferences have their defaults: %1: %2"_s.arg(
                          path, QString::fromLatin1(GetParam().message))));
    shell(u"rm -r \"$F\""_s);
    EXPECT_TRUE(store.setValue(u"refreshMinutes"_s, u"8"_s));
    EXPECT_EQ(contents(path), "[General]\nrefreshMinutes=8\n");
}

INSTANTIATE_TEST_SUITE_P(
    All, ConfFileObstacle,
    testing::Values(
        Obstacle{"Folder", "mkdir \"$F\"", "Is a directory"},
        Obstacle{"Pipe", "mkfifo \"$F\"", "Not a regular file"},
        Obstacle{"Device", "ln -s /dev/zero \"$F\"", "Not a regular file"},
        Obstacle{
            "LinksInACircle", "ln -s other \"$F\"; ln -s lumora.conf \"$(dirname \"$F\")/other\"",
            "Too many levels of symbolic links"},
        Obstacle{"FarTooLarge", "truncate -s 100M \"$F\"", "File too large"},
        Obstacle{"JustTooLarge", "truncate -s 1048577 \"$F\"", "File too large"}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(ConfFileTrouble, AFileThatCannotBeReadAnyLongerIsToldOf) {
    ConfFilePreferences store(path);
    const Said said;
    for (int i = 0; i < 2; ++i) {
        QSignalSpy changed(&store, &Preferences::changed);
        write(path, "[General]\nrefreshMinutes=5\n");
        ASSERT_TRUE(changed.count() > 0 || changed.wait(patience));
        EXPECT_EQ(said.lines().size(), i);
        shell(u"truncate -s 100M \"$F\""_s);
        ASSERT_TRUE(changed.wait(patience));
        EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
        shell(u"truncate -s 101M \"$F\"; touch \"$F.other\""_s);
        outlastTimers(ConfFilePreferences::settlingTime);
        EXPECT_EQ(said.lines().size(), i + 1);
    }
}
