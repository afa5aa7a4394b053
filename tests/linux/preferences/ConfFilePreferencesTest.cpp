#include "linux/preferences/ConfFilePreferences.h"

#include "support/Patience.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : "(no file)";
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly | QFile::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QFile::Permissions modeOf(const QString& path) {
    return QFile::permissions(path) & QFile::Permissions(0x7077); // owner, group, others
}

/// Takes the superuser's privileges away for a while; does nothing for anybody else.
class OrdinaryUser {
public:
    OrdinaryUser() { m_changed = geteuid() == 0 && seteuid(65534) == 0; }

    ~OrdinaryUser() { m_changed = m_changed && seteuid(0) != 0; }

private:
    bool m_changed;
};

class ConfFilePreferencesTest : public testing::Test {
protected:
    QStringList filesInFolder() const {
        return QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    /// Runs a shell command as another program would, with $F as the file.
    void shell(const QString& command) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"F"_s, path);
        process.setProcessEnvironment(environment);
        process.start(u"sh"_s, {u"-ec"_s, command});
        ASSERT_TRUE(process.waitForFinished(patience));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }

    QTemporaryDir home;
    const QString path = home.filePath(u"config/lumora/lumora.conf"_s);
};

/// The same with a store that watches.
class ConfFileWatching : public ConfFilePreferencesTest {
protected:
    /// Lets everything that is still on its way arrive.
    void settle() { outlastTimers(ConfFilePreferences::settlingTime); }

    /// Whether one change by another program is told of, and only one, after the command has run.
    bool isToldOf(const QString& command) {
        QSignalSpy changed(&store, &Preferences::changed);
        const QSignalSpy changedElsewhere(&store, &Preferences::changedElsewhere);
        shell(command);
        const bool told = changed.count() > 0 || changed.wait(patience);
        settle();
        return told && changed.count() == 1 && changedElsewhere.count() == 1;
    }

    ConfFilePreferences store{path};
};

} // namespace

TEST_F(ConfFilePreferencesTest, MakesTheFolderForTheUserAloneButNoFile) {
    const ConfFilePreferences store(path);
    EXPECT_EQ(
        modeOf(QFileInfo(path).path()), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(store.value(u"endpointURL"_s), std::nullopt);
    EXPECT_EQ(filesInFolder(), QStringList());
}

TEST_F(ConfFilePreferencesTest, KeepsWhatIsSetInAFileForTheUserAlone) {
    ConfFilePreferences store(path);
    QSignalSpy changed(&store, &Preferences::changed);
    EXPECT_TRUE(store.setValue(u"endpointURL"_s, u"https://h.example/api?a=1,2;b"_s));
    EXPECT_TRUE(store.setValue(u"section.collapsed.events"_s, u"true"_s));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(
        contents(path),
        "[General]\nendpointURL=https://h.example/api?a=1,2;b\nsection.collapsed.events=true\n");
    EXPECT_EQ(modeOf(path), QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(filesInFolder(), QStringList{u"lumora.conf"_s});

    const ConfFilePreferences again(path);
    EXPECT_EQ(again.value(u"endpointURL"_s), u"https://h.example/api?a=1,2;b"_s);
    EXPECT_EQ(again.value(u"section.collapsed.events"_s), u"true"_s);
}

TEST_F(ConfFilePreferencesTest, WritesNothingForAnEqualValue) {
    ConfFilePreferences store(path);
    ASSERT_TRUE(store.setValue(u"refreshMinutes"_s, u"5"_s));
    const QFileInfo before(path);
    const auto stamp = before.metadataChangeTime();
    QSignalSpy changed(&store, &Preferences::changed);
    EXPECT_TRUE(store.setValue(u"refreshMinutes"_s, u"5"_s));
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(QFileInfo(path).metadataChangeTime(), stamp);
}

TEST_F(ConfFilePreferencesTest, SeesEveryChangeAtTheNextReading) {
    ConfFilePreferences store(path);
    write(path, "[General]\nrefreshMinutes=5\n");
    EXPECT_EQ(store.value(u"refreshMinutes"_s), u"5"_s);
    write(path, "[General]\nrefreshMinutes=9\n"); // same size, same second
    EXPECT_EQ(store.value(u"refreshMinutes"_s), u"9"_s);
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
}

TEST_F(ConfFilePreferencesTest, WritingKeepsWhatItDoesNotKnow) {
    ConfFilePreferences store(path);
    write(path, "# mine\n[General]\nfuture=1\nrefreshMinutes=5\n\n[Other]\nx=y\n");
    ASSERT_TRUE(store.setValue(u"refreshMinutes"_s, u"10"_s));
    EXPECT_EQ(contents(path), "# mine\n[General]\nfuture=1\nrefreshMinutes=10\n\n[Other]\nx=y\n");
}

TEST_F(ConfFilePreferencesTest, ACorruptFileActsAsEmptyAndIsNotTouchedByReading) {
    ConfFilePreferences store(path);
    write(path, "[General]\nrefreshMinutes=5\n\xFF\xFE\n");
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_EQ(contents(path), "[General]\nrefreshMinutes=5\n\xFF\xFE\n");
    EXPECT_EQ(filesInFolder(), QStringList{u"lumora.conf"_s});
}

TEST_F(ConfFilePreferencesTest, WritingOverACorruptFileKeepsACopyOfIt) {
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

TEST_F(ConfFilePreferencesTest, WhatCannotBeReadActsAsEmptyAndIsNotWrittenOver) {
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

TEST_F(ConfFilePreferencesTest, AFolderInTheFilesPlaceActsAsEmptyAndStays) {
    ConfFilePreferences store(path);
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST_F(ConfFilePreferencesTest, APipeInTheFilesPlaceHoldsNobodyUp) {
    ConfFilePreferences store(path);
    shell(u"mkfifo \"$F\""_s);
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
}

TEST_F(ConfFilePreferencesTest, AFolderThatCannotBeMadeFailsWritingOnly) {
    write(home.filePath(u"config"_s), "a file in the way");
    ConfFilePreferences store(path);
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_FALSE(store.setValue(u"refreshMinutes"_s, u"6"_s));
}

TEST_F(ConfFilePreferencesTest, WritesThroughASymbolicLink) {
    ConfFilePreferences store(path);
    const QString target = home.filePath(u"dotfiles/my.conf"_s);
    ASSERT_TRUE(QFile::link(target, path)); // to a file that is not there yet
    EXPECT_EQ(store.value(u"refreshMinutes"_s), std::nullopt);
    ASSERT_TRUE(store.setValue(u"refreshMinutes"_s, u"6"_s));
    ASSERT_TRUE(store.setValue(u"refreshMinutes"_s, u"7"_s));
    EXPECT_EQ(contents(target), "[General]\nrefreshMinutes=7\n");
    EXPECT_EQ(QFileInfo(path).symLinkTarget(), target);
}

TEST_F(ConfFileWatching, TellsWhenAnotherProgramCreatesChangesReplacesOrDeletesTheFile) {
    EXPECT_TRUE(isToldOf(u"printf '[General]\\na=1\\n' > \"$F\""_s));
    EXPECT_TRUE(isToldOf(u"printf 'b=2\\n' >> \"$F\""_s));
    EXPECT_TRUE(isToldOf(u"sed -i s/b=2/b=3/ \"$F\""_s)); // by renaming
    EXPECT_TRUE(isToldOf(u"printf 'c=4\\n' >> \"$F\""_s));
    EXPECT_TRUE(isToldOf(u"rm \"$F\""_s));
    EXPECT_TRUE(isToldOf(u"printf '[General]\\na=1\\n' > \"$F\""_s));
    EXPECT_EQ(store.value(u"a"_s), u"1"_s);
}

TEST_F(ConfFileWatching, StaysSilentWhenNothingChanged) {
    ASSERT_TRUE(store.setValue(u"a"_s, u"1"_s));
    QSignalSpy changed(&store, &Preferences::changed);
    shell(u"touch \"$F\"; touch \"$F.other\"; cp \"$F\" \"$F.copy\"; mv \"$F.copy\" \"$F\""_s);
    settle();
    EXPECT_EQ(changed.count(), 0);
    // It still watches what is there now.
    EXPECT_TRUE(isToldOf(u"printf 'c=4\\n' >> \"$F\""_s));
}

TEST_F(ConfFileWatching, TellsOnceOfAnOwnWrite) {
    QSignalSpy changed(&store, &Preferences::changed);
    const QSignalSpy changedElsewhere(&store, &Preferences::changedElsewhere);
    ASSERT_TRUE(store.setValue(u"a"_s, u"1"_s));
    ASSERT_TRUE(store.setValue(u"a"_s, u"2"_s));
    settle();
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(changedElsewhere.count(), 0);
}

TEST_F(ConfFileWatching, OutlivesTheRemovalOfItsFolder) {
    ASSERT_TRUE(store.setValue(u"a"_s, u"1"_s));
    EXPECT_TRUE(isToldOf(u"rm -r \"$(dirname \"$F\")\""_s));
    QSignalSpy changed(&store, &Preferences::changed);
    shell(u"mkdir \"$(dirname \"$F\")\""_s);
    settle();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_TRUE(isToldOf(u"printf '[General]\\na=3\\n' > \"$F\""_s));
    EXPECT_EQ(store.value(u"a"_s), u"3"_s);
}

TEST_F(ConfFileWatching, WatchesWhatASymbolicLinkLeadsTo) {
    const QString target = home.filePath(u"dotfiles/my.conf"_s);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(target).path()));
    write(target, "[General]\na=1\n");
    EXPECT_TRUE(isToldOf(u"ln -s ../../dotfiles/my.conf \"$F\""_s));
    EXPECT_TRUE(isToldOf(u"printf 'b=2\\n' >> \"$F\""_s));
    EXPECT_TRUE(isToldOf(u"sed -i --follow-symlinks s/b=2/b=3/ \"$F\""_s));
    EXPECT_TRUE(isToldOf(u"rm \"$(readlink -f \"$F\")\""_s));
    EXPECT_TRUE(isToldOf(u"printf '[General]\\na=5\\n' > \"$F\""_s));
    EXPECT_EQ(store.value(u"a"_s), u"5"_s);
}

TEST(ConfFilePreferencesPath, FollowsTheConfigurationFolderWhereItIsAbsolute) {
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    const QString fallback = QDir::homePath() + u"/.config/lumora/lumora.conf"_s;
    qputenv("XDG_CONFIG_HOME", "/some/where/");
    EXPECT_EQ(ConfFilePreferences::defaultPath(), u"/some/where/lumora/lumora.conf"_s);
    qputenv("XDG_CONFIG_HOME", "some/where");
    EXPECT_EQ(ConfFilePreferences::defaultPath(), fallback);
    qputenv("XDG_CONFIG_HOME", "");
    EXPECT_EQ(ConfFilePreferences::defaultPath(), fallback);
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(ConfFilePreferences::defaultPath(), fallback);
    if (!before.isNull())
        qputenv("XDG_CONFIG_HOME", before);
}
