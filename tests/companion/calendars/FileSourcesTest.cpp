// Files and folders, as programs that synchronise calendars leave them.

#include "CalendarWorld.h"
#include "companion/calendars/FileSource.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

class FileSources : public testing::Test {
protected:
    void useFile() {
        world.calendars = {{.name = u"Home"_s, .place = IcsFile{world.path(u"home.ics"_s)}}};
        world.start();
    }

    void useFolder() {
        world.calendars = {{.name = u"Home"_s, .place = IcsFolder{world.path(u"calendars"_s)}}};
        world.start();
    }

    void awaitShown(const QStringList& titles) {
        await([&] { return world.shown() == titles; });
    }

    CalendarWorld world;
};

} // namespace

TEST_F(FileSources, ReadAFileAndReadItAgainWhenItChanges) {
    world.put(u"home.ics"_s, calendarWith({"Dentist"}));
    useFile();
    EXPECT_EQ(world.shown(), QStringList(u"Home: Dentist"_s));
    EXPECT_EQ(
        world.state(),
        (CalendarState{.name = u"Home"_s, .eventsToday = 1, .readAt = morning, .error = {}}));
    world.put(u"home.ics"_s, calendarWith({"Dentist", "Doctor"}));
    awaitShown({u"Home: Dentist"_s, u"Home: Doctor"_s});
    // Once more, and within the same file.
    QFile file(world.path(u"home.ics"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(calendarWith({"Nobody"}));
    file.close();
    awaitShown({u"Home: Nobody"_s});
}

TEST_F(FileSources, WaitForAFileThatIsNotThereYet) {
    useFile();
    EXPECT_EQ(world.shown(), QStringList());
    EXPECT_TRUE(world.state().error->endsWith(u"home.ics: No such file or directory"_s));
    world.put(u"home.ics"_s, calendarWith({"Dentist"}));
    awaitShown({u"Home: Dentist"_s});
    EXPECT_EQ(world.state().error, std::nullopt);
}

TEST_F(FileSources, KeepWhatAFileHeldThatIsNoCalendarNow) {
    world.put(u"home.ics"_s, calendarWith({"Dentist"}));
    useFile();
    world.put(u"home.ics"_s, "half a calen");
    await([this] { return world.state().error.has_value(); });
    EXPECT_TRUE(world.state().error->endsWith(u"home.ics: The file is no calendar"_s));
    EXPECT_EQ(world.shown(), QStringList(u"Home: Dentist"_s));
}

TEST_F(FileSources, ReadLargeFiles) {
    QByteArray text = calendarWith({"Dentist"});
    text.append(3 * 1024 * 1024, '\n');
    world.put(u"home.ics"_s, text);
    useFile();
    EXPECT_EQ(world.shown(), QStringList(u"Home: Dentist"_s));
}

TEST_F(FileSources, FollowAFolderOfEvents) {
    world.put(u"calendars/1.ics"_s, calendarWith({"One"}));
    world.put(u"calendars/2.ics"_s, calendarWith({"Two"}, 11));
    world.put(u"calendars/displayname"_s, "Something else");
    world.put(u"calendars/notes.txt"_s, calendarWith({"No"}));
    useFolder();
    EXPECT_EQ(world.shown(), QStringList({u"Home: One"_s, u"Home: Two"_s}));
    world.put(u"calendars/2.ics"_s, calendarWith({"Two, later"}, 12));
    awaitShown({u"Home: One"_s, u"Home: Two, later"_s});
    QFile::remove(world.path(u"calendars/1.ics"_s));
    awaitShown({u"Home: Two, later"_s});
    world.put(u"calendars/3.ics"_s, calendarWith({"Three"}, 13));
    awaitShown({u"Home: Two, later"_s, u"Home: Three"_s});
}

TEST_F(FileSources, FollowWhatIsWrittenIntoTheFilesOfAFolder) {
    world.put(u"calendars/1.ics"_s, calendarWith({"One"}));
    world.put(u"calendars/2.ics"_s, calendarWith({"Two"}, 11));
    useFolder();
    // As editors do it that are told to keep the file, to the same length as before.
    QFile file(world.path(u"calendars/2.ics"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Truncate));
    file.write(calendarWith({"Six"}, 11));
    file.close();
    awaitShown({u"Home: One"_s, u"Home: Six"_s});
    // And as programs do it that hand times on with what they copy.
    const QDateTime then = QFileInfo(file).lastModified();
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(calendarWith({"Ten"}, 11));
    ASSERT_TRUE(file.setFileTime(then, QFile::FileModificationTime));
    file.close();
    awaitShown({u"Home: One"_s, u"Home: Ten"_s});
}

TEST_F(FileSources, FollowWhatIsWrittenIntoTheFilesOfAnAccount) {
    world.put(u"calendars/office/1.ics"_s, calendarWith({"One"}));
    useFolder();
    QFile file(world.path(u"calendars/office/1.ics"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(calendarWith({"Another"}));
    file.close();
    awaitShown({u"office: Another"_s});
}

TEST_F(FileSources, FindTheCalendarsOfAnAccount) {
    world.put(u"calendars/office/1.ics"_s, calendarWith({"One"}));
    world.put(u"calendars/office/displayname"_s, " Day job\n");
    world.put(u"calendars/office/color"_s, "#ff0000");
    world.put(u"calendars/private/2.ics"_s, calendarWith({"Two"}, 11));
    world.put(u"calendars/.cache/3.ics"_s, calendarWith({"Hidden"}, 12));
    useFolder();
    EXPECT_EQ(world.shown(), QStringList({u"Day job: One"_s, u"private: Two"_s}));
    EXPECT_EQ(world.state().eventsToday, 2);
    world.put(u"calendars/private/4.ics"_s, calendarWith({"Four"}, 13));
    awaitShown({u"Day job: One"_s, u"private: Two"_s, u"private: Four"_s});
    world.put(u"calendars/new/5.ics"_s, calendarWith({"Five"}, 14));
    awaitShown({u"Day job: One"_s, u"private: Two"_s, u"private: Four"_s, u"new: Five"_s});
}

TEST_F(FileSources, SaySoWhereAFileOfAFolderIsNoCalendar) {
    world.put(u"calendars/1.ics"_s, calendarWith({"One"}));
    world.put(u"calendars/2.ics"_s, "nothing");
    useFolder();
    EXPECT_EQ(world.shown(), QStringList(u"Home: One"_s));
    EXPECT_EQ(world.state().error, u"1 of 2 files are no calendars"_s);
    world.now += std::chrono::hours(5);
    EXPECT_EQ(world.shown().size(), 1) << "the calendar as a whole does not fail";
}

TEST_F(FileSources, WaitForAFolderThatIsNotThereYet) {
    useFolder();
    EXPECT_TRUE(world.state().error->endsWith(u"calendars: There is no such folder"_s));
    world.put(u"calendars/1.ics"_s, calendarWith({"One"}));
    awaitShown({u"Home: One"_s});
}

// As on the file systems of other machines, of whose changes nobody is told.
TEST_F(FileSources, FindAChangeThatNobodyToldOfWithinAMinute) {
    world.put(u"home.ics"_s, calendarWith({"Dentist"}));
    useFile();
    world.put(u"home.ics"_s, calendarWith({"Doctor"}));
    EXPECT_EQ(world.shown(), QStringList(u"Home: Dentist"_s));
    world.refresh();
    EXPECT_EQ(world.shown(), QStringList(u"Home: Doctor"_s));
}

TEST_F(FileSources, FindAChangeOfAFolderThatNobodyToldOfWhenItIsDue) {
    world.put(u"calendars/1.ics"_s, calendarWith({"One"}));
    useFolder();
    world.put(u"calendars/1.ics"_s, calendarWith({"Another"}));
    world.now += std::chrono::minutes(14);
    world.refresh();
    EXPECT_EQ(world.shown(), QStringList(u"Home: One"_s));
    world.now += std::chrono::minutes(1);
    world.refresh();
    EXPECT_EQ(world.shown(), QStringList(u"Home: Another"_s));

    // A clock that was set back is no reason to wait.
    world.put(u"calendars/1.ics"_s, calendarWith({"One more"}));
    world.now -= std::chrono::hours(1);
    world.refresh();
    EXPECT_EQ(world.shown(), QStringList(u"Home: One more"_s));
}

TEST(FullPaths, BeginAtHome) {
    EXPECT_EQ(fullPath(u"~/a/./b.ics"_s), QDir::homePath() + u"/a/b.ics"_s);
    EXPECT_EQ(fullPath(u"/a//b.ics"_s), u"/a/b.ics"_s);
}

} // namespace lumora::companion::tests
