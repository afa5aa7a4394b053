#include "companion/program/Setup.h"

#include "companion/program/CheckReport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class Setup : public testing::Test {
protected:
    QTemporaryDir folder;

    QString path(const QString& name) const { return folder.filePath(name); }

    void touch(const QString& name) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
    }

    Places places() const { return {path(u"a/service.toml"_s), {}, {}}; }
};

} // namespace

TEST_F(Setup, KnowsCalendarsByWhatIsThere) {
    touch(u"my.ics"_s);
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"phone"_s));
    const auto settings = newSettingsFor(
        {.calendars =
             {u"webcal://example.org/x"_s, path(u"my.ics"_s), path(u"phone/"_s),
              u"https://example.org/y"_s},
         .habits = {},
         .chores = {},
         .inbox = path(u"in.md"_s),
         .journal = path(u"my.ics"_s),
         .port = 0,
         .gnome = true,
         .connect = false},
        "token");
    ASSERT_TRUE(settings) << qPrintable(settings.error());
    EXPECT_THAT(
        settings->calendars,
        ElementsAre(
            CalendarSettings{u"Calendar"_s, IcsAddress{QUrl(u"webcal://example.org/x"_s)}, false},
            CalendarSettings{u"my"_s, IcsFile{path(u"my.ics"_s)}, false},
            CalendarSettings{u"phone"_s, IcsFolder{path(u"phone"_s)}, false},
            CalendarSettings{u"Calendar 2"_s, IcsAddress{QUrl(u"https://example.org/y"_s)}, false},
            CalendarSettings{u"GNOME"_s, GnomeCalendars{}, false}));
    EXPECT_EQ(settings->port, 8764);
    EXPECT_EQ(settings->inbox, path(u"in.md"_s));
}

TEST_F(Setup, SaysWhatIsNotThere) {
    const auto faultOf = [](const InitCommand& init) {
        const auto settings = newSettingsFor(init, "token");
        return settings ? QString() : settings.error();
    };
    InitCommand init;
    init.calendars = {path(u"none.ics"_s)};
    EXPECT_EQ(faultOf(init), u"--calendar: %1 is not there"_s.arg(path(u"none.ics"_s)));
    init.calendars = {u"ftp://example.org/secret"_s};
    EXPECT_EQ(faultOf(init), u"--calendar: that is no https:// or webcal:// address"_s);
    init.calendars = {};
    init.journal = path(u"none.journal"_s);
    EXPECT_EQ(faultOf(init), path(u"none.journal"_s) + u" is not there"_s);
}

TEST_F(Setup, WritesOnceForTheUserAlone) {
    NewSettings settings;
    settings.token = newToken();
    ASSERT_TRUE(writeNewSettings(settings, places().settingsFile));
    const auto mode = QFile::permissions(places().settingsFile);
    EXPECT_FALSE(mode & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther));
    const auto again = writeNewSettings(settings, places().settingsFile);
    ASSERT_FALSE(again);
    EXPECT_TRUE(again.error().endsWith(u" is there already; edit it, or move it away first"_s));
    EXPECT_EQ(readSettingsFile(places())->token, settings.token);
}

TEST_F(Setup, NamesTheFileWithItsFaults) {
    EXPECT_THAT(
        readSettingsFile(places()).error(),
        ElementsAre(
            u"there is no %1; \"lumora-service init\" writes one"_s.arg(places().settingsFile)));
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"a"_s));
    QFile file(places().settingsFile);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("token = 3\nport = 0\n");
    file.close();
    EXPECT_EQ(readSettingsFile(places()).error().size(), 2);
    EXPECT_EQ(
        readSettingsFile(places()).error().last(),
        places().settingsFile + u": line 2: port: must be a whole number from 1 to 65535"_s);
}

TEST(CheckReport, SaysAgesAsPeopleDo) {
    EXPECT_EQ(ageText(59s), u"less than a minute"_s);
    EXPECT_EQ(ageText(60s), u"1 minute"_s);
    EXPECT_EQ(ageText(59min), u"59 minutes"_s);
    EXPECT_EQ(ageText(1h), u"1 hour"_s);
    EXPECT_EQ(ageText(47h), u"47 hours"_s);
    EXPECT_EQ(ageText(48h), u"2 days"_s);
}
