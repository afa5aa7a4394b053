#include "companion/program/ServiceCommandLine.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;

TEST(ServiceCommandLine, KnowsItsCommands) {
    EXPECT_EQ(parseServiceCommand({u"run"_s}), ServiceCommand(RunCommand{}));
    EXPECT_EQ(parseServiceCommand({u"check"_s}), ServiceCommand(CheckCommand{}));
    EXPECT_EQ(parseServiceCommand({u"connect"_s}), ServiceCommand(ConnectCommand{}));
    EXPECT_EQ(parseServiceCommand({u"--help"_s}), ServiceCommand(HelpCommand{}));
    EXPECT_EQ(parseServiceCommand({u"-h"_s}), ServiceCommand(HelpCommand{}));
    EXPECT_EQ(parseServiceCommand({u"--version"_s}), ServiceCommand(VersionCommand{}));
    EXPECT_EQ(parseServiceCommand({u"init"_s}), ServiceCommand(InitCommand{}));
}

TEST(ServiceCommandLine, TakesWhatTheFirstConfigurationNeeds) {
    InitCommand init;
    init.calendars = {u"https://example.org/a=b.ics"_s, u"my.ics"_s};
    init.habits = {u"Read"_s, u"Walk"_s};
    init.chores = {{u"Plants: all"_s, 7}};
    init.inbox = u"in.md"_s;
    init.journal = u"my.journal"_s;
    init.port = 9000;
    init.gnome = true;
    init.connect = true;
    EXPECT_EQ(
        parseServiceCommand(
            {u"init"_s, u"--calendar"_s, u"https://example.org/a=b.ics"_s, u"--calendar=my.ics"_s,
             u"--habit"_s, u" Read "_s, u"--habit=Walk"_s, u"--chore"_s, u"Plants: all:7"_s,
             u"--inbox"_s, u"in.md"_s, u"--hledger=my.journal"_s, u"--port=9000"_s, u"--gnome"_s,
             u"--connect"_s}),
        ServiceCommand(init));
}

TEST(ServiceCommandLine, SaysWhatIsWrong) {
    const QList<std::pair<QStringList, QString>> cases{
        {{}, u"what to do is missing"_s},
        {{u"serve"_s}, u"unknown argument \"serve\""_s},
        {{u"run"_s, u"now"_s}, u"unknown argument \"now\""_s},
        {{u"init"_s, u"now"_s}, u"unknown argument \"now\""_s},
        {{u"init"_s, u"--gnome=yes"_s}, u"unknown argument \"--gnome\""_s},
        {{u"init"_s, u"--habit"_s}, u"--habit needs a value"_s},
        {{u"init"_s, u"--habit="_s}, u"--habit needs a value"_s},
        {{u"init"_s, u"--port=0"_s}, u"--port needs a number from 1 to 65535"_s},
        {{u"init"_s, u"--port=70000"_s}, u"--port needs a number from 1 to 65535"_s},
    };
    for (const auto& [arguments, fault] : cases) {
        const auto parsed = parseServiceCommand(arguments);
        ASSERT_FALSE(parsed) << qPrintable(arguments.join(u' '));
        EXPECT_EQ(parsed.error(), fault + u"; see lumora-service --help"_s);
    }
    for (const QString& chore : {u"Plants"_s, u":7"_s, u"Plants:0"_s, u"Plants:a"_s, u"a:9999"_s})
        EXPECT_FALSE(parseServiceCommand({u"init"_s, u"--chore"_s, chore})) << qPrintable(chore);
}
