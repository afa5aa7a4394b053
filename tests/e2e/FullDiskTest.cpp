#include "e2e/AccessibleTree.h"
#include "e2e/ConfiguredProgram.h"
#include "e2e/XDesktop.h"
#include "support/Patience.h"

#include <QFile>
#include <QTest>

#include <sys/resource.h>

#include <csignal>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

bool hasReminders(const AccessibleNode& settings) {
    return settings.find(u"Notify 5 minutes before meetings"_s).has(u"checked"_s);
}

/// A program for which no file has room for a byte more, as on a full disk, until there is room
/// again.
class FullDisk : public ConfiguredProgram {
protected:
    void SetUp() override {
        ConfiguredProgram::SetUp();
        std::signal(SIGXFSZ, SIG_IGN); // and so it is for the program: its writes fail, no more
    }

    void TearDown() override { std::signal(SIGXFSZ, SIG_DFL); }

    void start() {
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
        before = lumora.preferencesFile();
        files = configFiles();
    }

    QStringList configFiles() const { return lumora.filesAtHome().filter(u"/config/"_s); }

    void leaveRoom(rlim_t bytes) {
        const rlimit limit{bytes, RLIM_INFINITY};
        ASSERT_EQ(prlimit(pid_t(lumora.program().processId()), RLIMIT_FSIZE, &limit, nullptr), 0);
    }

    void fill() { leaveRoom(0); }

    void makeRoom() { leaveRoom(RLIM_INFINITY); }

    /// Nothing was written: neither what was meant to be nor a part of it beside.
    void expectNothingWritten() {
        EXPECT_EQ(lumora.preferencesFile(), before);
        EXPECT_EQ(configFiles(), files);
    }

    void openSettings() {
        ASSERT_EQ(lumora.run({u"settings"_s}).exitCode, 0);
        ASSERT_TRUE(desktop.focuses(settingsTitle));
    }

    void fold(const QString& section) {
        ASSERT_EQ(lumora.run({u"show"_s}).exitCode, 0);
        ASSERT_TRUE(desktop.focuses(panelTitle));
        const auto isShown = [&](const AccessibleNode& panel) {
            return panel.findShown(section).exists();
        };
        ASSERT_TRUE(tree.comesToBe(panelTitle, isShown));
        desktop.click(tree.place(tree.window(panelTitle).findShown(section)).center());
    }

    bool goesAway(const QString& beginning) {
        return tree.comesToBe(panelTitle, [&](const AccessibleNode& panel) {
            return !panel.findShown(beginning).exists();
        });
    }

    void expectToEndWell() {
        EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
        EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
        const auto ended = lumora.waitForEnd();
        EXPECT_EQ(ended.exitCode, 0);
        EXPECT_EQ(ended.err, "");
    }

    const QString panelTitle = u"Lumora"_s;
    const QString settingsTitle = u"Settings"_s;
    const QString complaint =
        u"Not stored (~/config/lumora: File too large). It holds until Lumora ends."_s;

    AccessibleTree tree{lumora};
    XDesktop desktop{tree.display()};
    QByteArray before;
    QStringList files;
};

} // namespace

TEST_F(FullDisk, AFoldedSectionIsFoldedAndStoredWithTheNext) {
    start();
    fill();
    fold(u"Habits"_s);
    EXPECT_TRUE(goesAway(u"Read twenty pages"_s));
    expectNothingWritten();
    makeRoom();
    fold(u"Chores"_s);
    EXPECT_TRUE(goesAway(u"Descale the kettle"_s));
    EXPECT_TRUE(lumora.preferencesFile().contains("\nsection.collapsed.habits=true\n"));
    EXPECT_TRUE(lumora.preferencesFile().contains("\nsection.collapsed.chores=true\n"));
    EXPECT_TRUE(lumora.preferencesFile().startsWith(before));
    EXPECT_EQ(configFiles(), files);
    expectToEndWell();
}

TEST_F(FullDisk, ASettingSaysThatItIsNotStored) {
    start();
    openSettings();
    ASSERT_TRUE(tree.comesToBe(settingsTitle, hasReminders));
    fill();
    desktop.press(u"alt+n"_s);
    EXPECT_TRUE(tree.comesToBe(settingsTitle, [this](const AccessibleNode& settings) {
        return !hasReminders(settings) && settings.spoken().contains(complaint);
    }));
    expectNothingWritten();
    makeRoom();
    desktop.press(u"alt+n"_s);
    EXPECT_TRUE(tree.comesToBe(settingsTitle, [this](const AccessibleNode& settings) {
        return hasReminders(settings) && !settings.spoken().contains(complaint);
    }));
    expectToEndWell();
}

TEST_F(FullDisk, LaunchingAtLoginGoesBackToWhatHolds) {
    start();
    openSettings();
    fill();
    desktop.press(u"alt+l"_s);
    desktop.press(u"alt+n"_s); // once this is done, so is that
    EXPECT_TRUE(tree.comesToBe(settingsTitle, [](const AccessibleNode& settings) {
        return !hasReminders(settings) &&
               !settings.find(u"Launch at login"_s, u"check box"_s).has(u"checked"_s);
    }));
    EXPECT_TRUE(configFiles().filter(u"com.lumora.app.desktop"_s).isEmpty());
    makeRoom();
    desktop.press(u"alt+l"_s);
    EXPECT_TRUE(tree.comesToBe(settingsTitle, [](const AccessibleNode& settings) {
        return settings.find(u"Launch at login"_s, u"check box"_s).has(u"checked"_s);
    }));
    EXPECT_EQ(configFiles().filter(u"/autostart/com.lumora.app.desktop"_s).size(), 1);
    expectToEndWell();
}

TEST_F(FullDisk, WhatIsNoPreferencesFileIsNotReplacedBeforeItIsCopied) {
    const QByteArray endpoint = "endpointURL=" + service.endpoint().toUtf8();
    start();
    QFile odd(lumora.preferencesPath());
    ASSERT_TRUE(odd.open(QFile::WriteOnly));
    odd.write("my diary\n" + endpoint + '\n');
    odd.close();
    before = lumora.preferencesFile();
    openSettings();
    fill();
    desktop.press(u"alt+n"_s);
    EXPECT_TRUE(tree.comesToBe(
        settingsTitle, [](const AccessibleNode& settings) { return !hasReminders(settings); }));
    expectNothingWritten();
    makeRoom();
    fold(u"Habits"_s);
    const QString copy = lumora.preferencesPath() + u".corrupt"_s;
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(copy); }, patience));
    QFile copied(copy);
    ASSERT_TRUE(copied.open(QFile::ReadOnly));
    EXPECT_EQ(copied.readAll(), before);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            return lumora.preferencesFile() ==
                   "[General]\nnotifyBeforeMeetings=false\nsection.collapsed.habits=true\n";
        },
        patience));
}
