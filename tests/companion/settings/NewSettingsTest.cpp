#include "companion/settings/NewSettings.h"

#include "companion/settings/SettingsReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;

TEST(NewSettings, AreReadAsTheyWereMeant) {
    NewSettings first;
    first.token = newToken();
    first.port = 9001;
    first.calendars = {
        {u"A \"quoted\" \\ name"_s, IcsAddress{QUrl(u"https://example.org/a%20b;c,d?e=f"_s)},
         false},
        {u"File"_s, IcsFile{u"/a \"b\"/c.ics"_s}, false},
        {u"Folder"_s, IcsFolder{u"/d\\e"_s}, false},
        {u"GNOME"_s, GnomeCalendars{}, false},
    };
    first.habits = {u"Drink water"_s, u"drink, water!"_s, u"読む"_s};
    first.chores = {{{}, u"Water the plants"_s, {}, 7}};
    first.inbox = u"/notes/inbox.org"_s;
    first.journal = u"/books/all.journal"_s;

    const auto read = readSettings(newSettingsText(first), {});
    ASSERT_TRUE(read) << qPrintable(read.error().first().text());
    EXPECT_EQ(read->token, first.token);
    EXPECT_EQ(read->port, first.port);
    EXPECT_EQ(read->agenda.calendars, first.calendars);
    const std::vector<HabitSettings> habits{
        {u"drink-water"_s, u"Drink water"_s, 1},
        {u"drink-water-2"_s, u"drink, water!"_s, 1},
        {u"読む"_s, u"読む"_s, 1}};
    EXPECT_EQ(read->habits, habits);
    const std::vector<ChoreSettings> chores{{u"water-the-plants"_s, u"Water the plants"_s, {}, 7}};
    EXPECT_EQ(read->chores, chores);
    EXPECT_EQ(read->capture, CaptureSettings(CaptureFile{first.inbox, CaptureFormat::Org}));
    EXPECT_EQ(read->spending, SpendingSettings(JournalSettings{first.journal, {}, {}}));
}

TEST(NewSettings, StandWithATokenAlone) {
    NewSettings first;
    first.token = newToken();
    EXPECT_TRUE(readSettings(newSettingsText(first), {}));
}

TEST(NewSettings, HaveIdsForEveryName) {
    EXPECT_EQ(idFor(u"  Stretch — twice a day! "_s, {}), u"stretch-twice-a-day"_s);
    EXPECT_EQ(idFor(u"🛒"_s, {}), u"item"_s);
    EXPECT_EQ(idFor(u"🛒"_s, {u"item"_s, u"item-2"_s}), u"item-3"_s);
}

TEST(NewSettings, HaveATokenOfTheirOwn) {
    const QByteArray token = newToken();
    EXPECT_EQ(token.size(), 43); // 32 bytes
    EXPECT_THAT(token.toStdString(), testing::MatchesRegex("[A-Za-z0-9_-]+"));
    EXPECT_NE(token, newToken());
}
