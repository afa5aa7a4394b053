#include "linux/preferences/ConfFileFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

QFile::Permissions modeOf(const QString& path) {
    return QFile::permissions(path) & QFile::Permissions(0x7077); // owner, group, others
}

using ConfFilePreferencesTest = ConfFileFixture;

/// The same with a store that watches.
class ConfFileWatching : public ConfFileFixture {
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
