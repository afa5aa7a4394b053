#include "linux/preferences/ConfFileFixture.h"
#include "support/FileSizeLimit.h"

#include <QSignalSpy>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A user whose disk is full for a while.
class ConfFileUnstored : public ConfFileFixture {
protected:
    void SetUp() override { write(path, before); }

    /// Sets a key while no file can grow.
    void setInVain(const QString& key, const QString& text) {
        const FileSizeLimit noRoom;
        const auto stored = store.setValue(key, text);
        ASSERT_FALSE(stored);
        EXPECT_EQ(stored.error(), QFileInfo(path).path() + u": File too large"_s);
    }

    /// Lets everything that is still on its way arrive.
    void settle() { outlastTimers(ConfFilePreferences::settlingTime); }

    const QByteArray before = "[General]\nrefreshMinutes=5\n";
    ConfFilePreferences store{path};
};

const QString endpointKey = u"endpointURL"_s;
const QString minutesKey = u"refreshMinutes"_s;
const QString foldedKey = u"section.collapsed.events"_s;

} // namespace

TEST_F(ConfFileUnstored, HoldsAsLongAsTheProgramRuns) {
    const QSignalSpy changed(&store, &Preferences::changed);
    setInVain(endpointKey, u"https://a"_s);
    setInVain(minutesKey, u"6"_s);
    EXPECT_EQ(changed.count(), 2);
    setInVain(minutesKey, u"6"_s);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(store.value(endpointKey), u"https://a"_s);
    EXPECT_EQ(store.value(minutesKey), u"6"_s);
    EXPECT_FALSE(store.isStored(endpointKey));
    EXPECT_FALSE(store.isStored(minutesKey));
    EXPECT_TRUE(store.isStored(foldedKey));
    EXPECT_EQ(contents(path), before);

    const ConfFilePreferences next(path);
    EXPECT_EQ(next.value(minutesKey), u"5"_s);
    EXPECT_TRUE(next.isStored(minutesKey));
}

TEST_F(ConfFileUnstored, IsStoredWithTheNextChange) {
    setInVain(endpointKey, u"https://a"_s);
    setInVain(minutesKey, u"6"_s);
    ASSERT_TRUE(store.setValue(foldedKey, u"true"_s));
    EXPECT_EQ(
        contents(path), "[General]\nrefreshMinutes=6\nendpointURL=https://a\n"
                        "section.collapsed.events=true\n");
    EXPECT_TRUE(store.isStored(endpointKey));
    EXPECT_TRUE(store.isStored(minutesKey));
    write(path, before);
    EXPECT_EQ(store.value(minutesKey), u"5"_s);
}

TEST_F(ConfFileUnstored, IsStoredEvenIfTheNextChangeIsNone) {
    setInVain(endpointKey, u"https://a"_s);
    ASSERT_TRUE(store.setValue(minutesKey, u"5"_s));
    EXPECT_EQ(contents(path), before + "endpointURL=https://a\n");
}

TEST_F(ConfFileUnstored, WhatIsTakenBackIsStored) {
    setInVain(endpointKey, u"https://a"_s);
    setInVain(minutesKey, u"6"_s);
    const FileSizeLimit noRoom;
    QSignalSpy changed(&store, &Preferences::changed);
    EXPECT_TRUE(store.setValue(minutesKey, u"5"_s));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(store.isStored(minutesKey));
    EXPECT_FALSE(store.isStored(endpointKey));
    EXPECT_EQ(store.value(minutesKey), u"5"_s);
}

TEST_F(ConfFileUnstored, WhoeverChangesTheKeyByHandHasTheLastWord) {
    setInVain(endpointKey, u"https://a"_s);
    setInVain(minutesKey, u"6"_s);
    QSignalSpy changedElsewhere(&store, &Preferences::changedElsewhere);
    write(path, "[General]\nrefreshMinutes=7\nfuture=1\n");
    ASSERT_TRUE(changedElsewhere.wait(patience));
    EXPECT_EQ(store.value(minutesKey), u"7"_s);
    EXPECT_TRUE(store.isStored(minutesKey));
    EXPECT_EQ(store.value(endpointKey), u"https://a"_s);
    ASSERT_TRUE(store.setValue(foldedKey, u"true"_s));
    EXPECT_EQ(
        contents(path), "[General]\nrefreshMinutes=7\nfuture=1\nendpointURL=https://a\n"
                        "section.collapsed.events=true\n");
}

TEST_F(ConfFileUnstored, SurvivesATimeInWhichTheFileCannotBeRead) {
    QSignalSpy changed(&store, &Preferences::changed);
    shell(u"mv \"$F\" \"$F.kept\"; mkdir \"$F\""_s);
    ASSERT_TRUE(changed.wait(patience));
    const auto stored = store.setValue(minutesKey, u"6"_s);
    ASSERT_FALSE(stored);
    EXPECT_EQ(stored.error(), path + u": Is a directory"_s);
    shell(u"rmdir \"$F\"; mv \"$F.kept\" \"$F\""_s);
    settle();
    EXPECT_EQ(store.value(minutesKey), u"6"_s);
    EXPECT_EQ(contents(path), before);
    ASSERT_TRUE(store.setValue(foldedKey, u"true"_s));
    EXPECT_EQ(contents(path), "[General]\nrefreshMinutes=6\nsection.collapsed.events=true\n");
}

TEST_F(ConfFileUnstored, AWriteHidesNoChangeThatCameJustBefore) {
    const QSignalSpy changedElsewhere(&store, &Preferences::changedElsewhere);
    write(path, "[General]\nrefreshMinutes=7\n");
    ASSERT_TRUE(store.setValue(foldedKey, u"true"_s));
    settle();
    EXPECT_EQ(changedElsewhere.count(), 1);
    EXPECT_EQ(contents(path), "[General]\nrefreshMinutes=7\nsection.collapsed.events=true\n");
}
