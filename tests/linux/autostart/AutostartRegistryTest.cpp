#include "linux/autostart/AutostartRegistry.h"

#include "linux/autostart/DesktopEntry.h"
#include "support/FileSizeLimit.h"
#include "support/ScopedEnvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using Status = LoginItemStatus;

void write(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// A user with folders of their own and a program with an awkward path.
class AutostartRegistryTest : public testing::Test {
protected:
    void SetUp() override {
        write(program, "#!/bin/sh\n");
        ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    }

    void writeUserEntry(const QByteArray& keys) { write(userFile, "[Desktop Entry]\n" + keys); }

    void writeSystemEntry(const QByteArray& keys) { write(systemFile, "[Desktop Entry]\n" + keys); }

    QString userValue(const QString& key) const {
        const auto entry = DesktopEntry::parse(contentOf(userFile));
        return entry ? entry->value(key).value_or(QString()) : QString();
    }

    /// The files in the user's folder, hidden ones too.
    QStringList userFiles() const {
        return QDir(userFolder).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    QTemporaryDir home;
    QString userFolder = home.filePath(u"config/autostart"_s);
    QString userFile = userFolder + u"/com.lumora.app.desktop"_s;
    QString systemFile = home.filePath(u"xdg/autostart/com.lumora.app.desktop"_s);
    QString program = home.filePath(u"my \"programs\" $5 100%/lumora"_s);
    AutostartRegistry registry{
        {userFolder, {home.filePath(u"none"_s), home.filePath(u"xdg/autostart"_s)}, program}};
};

} // namespace

TEST_F(AutostartRegistryTest, AskingLeavesNothingBehind) {
    EXPECT_EQ(registry.status(), Status::NotRegistered);
    EXPECT_FALSE(QFileInfo::exists(userFolder));
}

TEST_F(AutostartRegistryTest, NamesTheEntryThatCounts) {
    EXPECT_EQ(registry.place(), userFile);
    writeSystemEntry("Exec=/bin/sh\n");
    EXPECT_EQ(registry.place(), systemFile);
    writeUserEntry("Exec=/bin/sh\n");
    EXPECT_EQ(registry.place(), userFile);
    const AutostartRegistry own({QDir::homePath() + u"/.config/autostart"_s, {}, program});
    EXPECT_EQ(own.place(), u"~/.config/autostart/com.lumora.app.desktop"_s);
}

TEST_F(AutostartRegistryTest, RegistersAnEntryThatStartsTheProgram) {
    ASSERT_TRUE(registry.registerProgram());
    EXPECT_EQ(registry.status(), Status::Enabled);
    QByteArray path = program.toUtf8();
    path.replace("%", "%%").replace("\"", "\\\\\"").replace("$", "\\\\$");
    EXPECT_EQ(
        contentOf(userFile), "[Desktop Entry]\n"
                             "Type=Application\n"
                             "Name=Lumora\n"
                             "Comment=Your next meeting, habits and chores in the status area\n"
                             "Exec=\"" +
                                 path +
                                 "\"\n"
                                 "Icon=com.lumora.app\n"
                                 "Terminal=false\n");
    EXPECT_EQ(userFiles(), QStringList(u"com.lumora.app.desktop"_s));
}

TEST_F(AutostartRegistryTest, AnEntryNamesItsProgramAsDesktopsDo) {
    writeUserEntry("Exec=sh --demo\n");
    EXPECT_EQ(registry.status(), Status::Enabled);
    writeUserEntry("Exec=no-such-program-anywhere\n");
    EXPECT_EQ(registry.status(), Status::NotFound);
    writeUserEntry("Exec=/bin/sh\nTryExec=/bin/no-such-shell\n");
    EXPECT_EQ(registry.status(), Status::NotFound);
    writeUserEntry("Exec=/bin/sh\nTryExec=sh\n");
    EXPECT_EQ(registry.status(), Status::Enabled);
    writeUserEntry("Exec=/etc/passwd\n"); // no program
    EXPECT_EQ(registry.status(), Status::NotFound);
    writeUserEntry("Name=Lumora\n");
    EXPECT_EQ(registry.status(), Status::NotFound);
}

TEST_F(AutostartRegistryTest, DesktopsSwitchAnEntryOff) {
    for (const QByteArray& key :
         {QByteArray("Hidden=true"), QByteArray("X-GNOME-Autostart-enabled=false"),
          QByteArray("X-MATE-Autostart-enabled=false")}) {
        writeUserEntry("Exec=sh\n" + key + '\n');
        EXPECT_EQ(registry.status(), Status::RequiresApproval) << key.toStdString();
        // Whatever it would have started.
        writeUserEntry("Exec=/gone\n" + key + '\n');
        EXPECT_EQ(registry.status(), Status::RequiresApproval) << key.toStdString();
    }
    writeUserEntry("Exec=sh\nHidden=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_EQ(registry.status(), Status::Enabled);
}

TEST_F(AutostartRegistryTest, RegisteringEnablesFromEveryState) {
    const QByteArray states[] = {
        "Exec=sh\nHidden=true\n",
        "Exec=sh\nX-GNOME-Autostart-enabled=false\n",
        "Exec=sh\nX-MATE-Autostart-enabled=false\n",
        "Exec=/gone/lumora\n",
        "Exec=sh\nTryExec=/gone/lumora\n",
        "",
    };
    for (const QByteArray& keys : states) {
        writeUserEntry(keys);
        ASSERT_TRUE(registry.registerProgram());
        EXPECT_EQ(registry.status(), Status::Enabled) << keys.toStdString();
    }
    write(userFile, "no desktop entry at all");
    EXPECT_EQ(registry.status(), Status::NotFound);
    ASSERT_TRUE(registry.registerProgram());
    EXPECT_EQ(registry.status(), Status::Enabled);
}

TEST_F(AutostartRegistryTest, ForeignKeysSurvive) {
    writeUserEntry("Name=Mine\nName[de]=Meins\nX-GNOME-Autostart-Delay=5\nHidden=true\nExec=/gone\n"
                   "X-GNOME-Autostart-enabled=false\n\n[Desktop Action x]\nExec=x\n");
    ASSERT_TRUE(registry.registerProgram());
    EXPECT_EQ(userValue(u"Name"_s), u"Mine"_s);
    EXPECT_EQ(userValue(u"Name[de]"_s), u"Meins"_s);
    EXPECT_EQ(userValue(u"X-GNOME-Autostart-Delay"_s), u"5"_s);
    EXPECT_EQ(userValue(u"X-GNOME-Autostart-enabled"_s), u"true"_s);
    EXPECT_EQ(userValue(u"Hidden"_s), QString());
    EXPECT_TRUE(contentOf(userFile).endsWith("\n\n[Desktop Action x]\nExec=x\n"));
}

TEST_F(AutostartRegistryTest, UnregisteringRemovesTheEntry) {
    ASSERT_TRUE(registry.registerProgram());
    ASSERT_TRUE(registry.unregisterProgram());
    EXPECT_EQ(registry.status(), Status::NotRegistered);
    EXPECT_EQ(userFiles(), QStringList());
    EXPECT_TRUE(registry.unregisterProgram());
}

TEST_F(AutostartRegistryTest, AnEntryOfTheSystemsCountsWithoutOneOfTheUsers) {
    writeSystemEntry("Exec=sh\n");
    EXPECT_EQ(registry.status(), Status::Enabled);
    writeUserEntry("Exec=sh\nHidden=true\n");
    EXPECT_EQ(registry.status(), Status::RequiresApproval);
}

TEST_F(AutostartRegistryTest, UnregisteringHidesAnEntryOfTheSystems) {
    writeSystemEntry("Exec=sh\n");
    ASSERT_TRUE(registry.unregisterProgram());
    EXPECT_EQ(userValue(u"Hidden"_s), u"true"_s);
    // Nothing but Lumora itself has switched it off: there is no hint to give.
    EXPECT_EQ(registry.status(), Status::NotRegistered);

    ASSERT_TRUE(registry.registerProgram());
    EXPECT_EQ(registry.status(), Status::Enabled);
    ASSERT_TRUE(registry.unregisterProgram());
    EXPECT_EQ(registry.status(), Status::NotRegistered);
    EXPECT_EQ(contentOf(systemFile), "[Desktop Entry]\nExec=sh\n");
}

TEST_F(AutostartRegistryTest, ALinkGivesWayInsteadOfItsTarget) {
    const QString target = home.filePath(u"applications/lumora.desktop"_s);
    write(target, "[Desktop Entry]\nExec=/gone\nX-Kept=1\n");
    QDir().mkpath(userFolder);
    ASSERT_TRUE(QFile::link(target, userFile));
    EXPECT_EQ(registry.status(), Status::NotFound);
    ASSERT_TRUE(registry.registerProgram());
    EXPECT_EQ(registry.status(), Status::Enabled);
    EXPECT_EQ(userValue(u"X-Kept"_s), u"1"_s);
    EXPECT_FALSE(QFileInfo(userFile).isSymLink());
    EXPECT_EQ(contentOf(target), "[Desktop Entry]\nExec=/gone\nX-Kept=1\n");
}

TEST_F(AutostartRegistryTest, ALinkThatLeadsNowhereIsAnEntryWithoutAProgram) {
    QDir().mkpath(userFolder);
    ASSERT_TRUE(QFile::link(home.filePath(u"gone"_s), userFile));
    EXPECT_EQ(registry.status(), Status::NotFound);
    ASSERT_TRUE(registry.unregisterProgram());
    EXPECT_EQ(registry.status(), Status::NotRegistered);
}

TEST_F(AutostartRegistryTest, APipeInTheEntrysPlaceHoldsNobodyUp) {
    QDir().mkpath(userFolder);
    ASSERT_EQ(mkfifo(QFile::encodeName(userFile).constData(), 0600), 0);
    EXPECT_EQ(registry.status(), Status::NotFound);
    ASSERT_TRUE(registry.registerProgram());
    EXPECT_EQ(registry.status(), Status::Enabled);
}

TEST_F(AutostartRegistryTest, AnEntryThatIsFarTooLargeIsNone) {
    writeUserEntry("Exec=sh\n");
    ASSERT_TRUE(QFile::resize(userFile, 100 * 1024 * 1024));
    EXPECT_EQ(registry.status(), Status::NotFound);
    ASSERT_TRUE(registry.registerProgram());
    EXPECT_EQ(registry.status(), Status::Enabled);
    EXPECT_LT(QFileInfo(userFile).size(), 1000);
}

TEST_F(AutostartRegistryTest, FailuresCarryTheSystemsMessage) {
    // A file where the folder should be stops everybody, the superuser too.
    write(home.filePath(u"config"_s), "");
    const auto registered = registry.registerProgram();
    ASSERT_FALSE(registered);
    EXPECT_EQ(registered.error(), userFolder + u": Not a directory"_s);
    EXPECT_EQ(registry.status(), Status::NotRegistered);
}

TEST_F(AutostartRegistryTest, AnEntryThatCannotBeReplacedStaysAsItIs) {
    QDir().mkpath(userFile + u"/inside"_s);
    const auto registered = registry.registerProgram();
    ASSERT_FALSE(registered);
    EXPECT_EQ(registered.error(), userFile + u": Is a directory"_s);
    EXPECT_EQ(userFiles(), QStringList());
    const auto unregistered = registry.unregisterProgram();
    ASSERT_FALSE(unregistered);
    EXPECT_EQ(unregistered.error(), userFile + u": Directory not empty"_s);
}

TEST_F(AutostartRegistryTest, WhereNothingCanBeWrittenTheOldEntryStays) {
    const QByteArray before = "[Desktop Entry]\nExec=/gone\n";
    write(userFile, before);
    const FileSizeLimit noRoom;
    const auto registered = registry.registerProgram();
    ASSERT_FALSE(registered);
    EXPECT_EQ(registered.error(), userFolder + u": File too large"_s);
    EXPECT_EQ(contentOf(userFile), before);
    EXPECT_EQ(userFiles(), QStringList(u"com.lumora.app.desktop"_s));
}

TEST_F(AutostartRegistryTest, AReadOnlyFolderIsReported) {
    if (geteuid() == 0)
        GTEST_SKIP() << "nothing is read-only for the superuser";
    writeUserEntry("Exec=sh\nHidden=true\n");
    ASSERT_TRUE(QFile::setPermissions(userFolder, QFile::ReadOwner | QFile::ExeOwner));
    const auto registered = registry.registerProgram();
    const auto unregistered = registry.unregisterProgram();
    ASSERT_TRUE(
        QFile::setPermissions(userFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    ASSERT_FALSE(registered);
    EXPECT_EQ(registered.error(), userFolder + u": Permission denied"_s);
    ASSERT_FALSE(unregistered);
    EXPECT_EQ(unregistered.error(), userFile + u": Permission denied"_s);
    EXPECT_EQ(registry.status(), Status::RequiresApproval);
}

TEST(AutostartPlaces, AreThoseOfTheUser) {
    const ScopedEnvironment user("XDG_CONFIG_HOME", "/u/config");
    const ScopedEnvironment system("XDG_CONFIG_DIRS", "/a:relative:/b/");
    const auto places = AutostartRegistry::defaultPlaces();
    EXPECT_EQ(places.userFolder, u"/u/config/autostart"_s);
    EXPECT_EQ(places.systemFolders, (QStringList{u"/a/autostart"_s, u"/b/autostart"_s}));
    EXPECT_EQ(places.program, QCoreApplication::applicationFilePath());
}

TEST(AutostartPlaces, HaveDefaults) {
    const ScopedEnvironment user("XDG_CONFIG_HOME", "relative");
    const ScopedEnvironment system("XDG_CONFIG_DIRS", std::nullopt);
    const auto places = AutostartRegistry::defaultPlaces();
    EXPECT_EQ(places.userFolder, QDir::homePath() + u"/.config/autostart"_s);
    EXPECT_EQ(places.systemFolders, QStringList(u"/etc/xdg/autostart"_s));
}
