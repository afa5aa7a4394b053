#include "linux/preferences/ConfFileFixture.h"
#include "support/FileSizeLimit.h"
#include "support/SmallDisk.h"

#include <unistd.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Takes the superuser's privileges away for a while; does nothing for anybody else.
class OrdinaryUser {
public:
    OrdinaryUser() { m_changed = geteuid() == 0 && seteuid(65534) == 0; }

    ~OrdinaryUser() { m_changed = m_changed && seteuid(0) != 0; }

private:
    bool m_changed;
};

using ConfFileTrouble = ConfFileFixture;

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

TEST_F(ConfFileTrouble, AFolderInTheFilesPlaceActsAsEmptyAndStays) {
    ConfFilePreferences store(path);
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST_F(ConfFileTrouble, APipeInTheFilesPlaceHoldsNobodyUp) {
    ConfFilePreferences store(path);
    shell(u"mkfifo \"$F\""_s);
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
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
