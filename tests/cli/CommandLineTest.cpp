#include "cli/CommandLine.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

Command parsed(const QStringList& arguments) {
    const auto command = parseCommandLine(arguments);
    EXPECT_TRUE(command) << arguments.join(u' ').toStdString();
    return command.value_or(Command(HelpCommand{}));
}

QString complaint(const QStringList& arguments) {
    const auto command = parseCommandLine(arguments);
    return command ? QString() : command.error();
}

} // namespace

TEST(CommandLine, RunsWithoutArguments) {
    EXPECT_EQ(parsed({}), Command(RunCommand{}));
}

TEST(CommandLine, Demo) {
    EXPECT_EQ(parsed({u"--demo"_s}), Command((RunCommand{true, {}})));
    EXPECT_EQ(
        parsed({u"--demo"_s, u"--scenario"_s, u"empty"_s}),
        Command((RunCommand{true, u"empty"_s})));
    EXPECT_EQ(
        parsed({u"--scenario=flaky"_s, u"--demo"_s}), Command((RunCommand{true, u"flaky"_s})));
    EXPECT_EQ(complaint({u"--scenario"_s, u"empty"_s}), u"--scenario goes with --demo"_s);
}

TEST(CommandLine, Status) {
    using Format = StatusFormat;
    EXPECT_EQ(parsed({u"status"_s}), Command(StatusCommand{Format::Text}));
    EXPECT_EQ(
        parsed({u"status"_s, u"--format"_s, u"json"_s}), Command(StatusCommand{Format::Json}));
    EXPECT_EQ(parsed({u"status"_s, u"--format=text"_s}), Command(StatusCommand{Format::Text}));
    EXPECT_EQ(
        complaint({u"status"_s, u"--format=yaml"_s}),
        u"unknown format \"yaml\"; "
        "there are text, json, waybar, polybar, i3blocks and i3status-rust"_s);
    EXPECT_EQ(
        parsed({u"status"_s, u"--format"_s, u"i3status-rust"_s}),
        Command(StatusCommand{Format::I3statusRust}));
}

TEST(CommandLine, FollowsTheStatus) {
    EXPECT_EQ(parsed({u"status"_s, u"--follow"_s}), Command((StatusCommand{.follow = true})));
    const Command polybar = StatusCommand{.format = StatusFormat::Polybar, .follow = true};
    EXPECT_EQ(parsed({u"status"_s, u"--follow"_s, u"--format"_s, u"polybar"_s}), polybar);
    EXPECT_EQ(parsed({u"status"_s, u"--format=polybar"_s, u"--follow"_s}), polybar);
}

TEST(CommandLine, PlainCommands) {
    using Action = WindowCommand::Action;
    EXPECT_EQ(parsed({u"toggle"_s}), Command(WindowCommand{Action::Toggle}));
    EXPECT_EQ(parsed({u"show"_s}), Command(WindowCommand{Action::Show}));
    EXPECT_EQ(parsed({u"hide"_s}), Command(WindowCommand{Action::Hide}));
    EXPECT_EQ(parsed({u"settings"_s}), Command(WindowCommand{Action::Settings}));
    EXPECT_EQ(parsed({u"refresh"_s}), Command(RefreshCommand{}));
    EXPECT_EQ(parsed({u"join"_s}), Command(JoinCommand{}));
    EXPECT_EQ(parsed({u"quit"_s}), Command(QuitCommand{}));
    EXPECT_EQ(parsed({u"--help"_s}), Command(HelpCommand{}));
    EXPECT_EQ(parsed({u"-h"_s}), Command(HelpCommand{}));
    EXPECT_EQ(parsed({u"--version"_s}), Command(VersionCommand{}));
}

TEST(CommandLine, Agenda) {
    EXPECT_EQ(parsed({u"agenda"_s}), Command(AgendaCommand{}));
    EXPECT_EQ(parsed({u"agenda"_s, u"--format=json"_s}), Command(AgendaCommand{.asJson = true}));
    EXPECT_EQ(parsed({u"agenda"_s, u"--format"_s, u"text"_s}), Command(AgendaCommand{}));
    EXPECT_EQ(
        complaint({u"agenda"_s, u"--format=waybar"_s}),
        u"unknown format \"waybar\"; there are text and json"_s);
}

TEST(CommandLine, TextsNeedNoQuotes) {
    EXPECT_EQ(parsed({u"capture"_s}), Command(CaptureCommand{std::nullopt}));
    EXPECT_EQ(
        parsed({u"capture"_s, u"buy"_s, u"milk -- now"_s}),
        Command(CaptureCommand{u"buy milk -- now"_s}));
    EXPECT_EQ(parsed({u"capture"_s, u"--"_s, u"--help"_s}), Command(CaptureCommand{u"--help"_s}));
    EXPECT_EQ(parsed({u"capture"_s, QString()}), Command(CaptureCommand{QString()}));
    EXPECT_EQ(
        complaint({u"capture"_s, u"--loud"_s}),
        u"unknown argument \"--loud\"; see lumora --help"_s);
}

TEST(CommandLine, HabitsAndChores) {
    using Kind = ItemCommand::Kind;
    EXPECT_EQ(parsed({u"habit"_s, u"h1"_s}), Command((ItemCommand{Kind::Habit, u"h1"_s})));
    EXPECT_EQ(
        parsed({u"chore"_s, u"Water"_s, u"plants"_s}),
        Command((ItemCommand{Kind::Chore, u"Water plants"_s})));
    EXPECT_EQ(
        parsed({u"chore"_s, u"--"_s, u"--list"_s}),
        Command((ItemCommand{Kind::Chore, u"--list"_s})));
    EXPECT_EQ(parsed({u"habit"_s, u"--list"_s}), Command((ItemCommand{Kind::Habit, std::nullopt})));
    for (const QStringList& without : {QStringList(u"habit"_s), {u"chore"_s, u""_s}})
        EXPECT_EQ(
            complaint(without), u"which one? Its id or its name is missing; --list lists them"_s);
    EXPECT_EQ(
        complaint({u"habit"_s, u"--all"_s}), u"unknown argument \"--all\"; see lumora --help"_s);
}

TEST(CommandLine, UnknownArgumentsAreNamed) {
    const QList<QPair<QStringList, QString>> cases{
        {{u"--nonsense"_s}, u"--nonsense"_s},
        {{u"--format"_s}, u"--format"_s},
        {{u"dance"_s}, u"dance"_s},
        {{u"--demo"_s, u"x"_s}, u"x"_s},
        {{u"status"_s, u"--loud"_s}, u"--loud"_s},
        {{u"refresh"_s, u"now"_s}, u"now"_s},
        {{u"show"_s, u"--now"_s}, u"--now"_s},
        {{u"quit"_s, u"--force"_s}, u"--force"_s},
        {{u"--help"_s, u"x"_s}, u"x"_s},
        {{QString()}, QString()},
    };
    for (const auto& [arguments, culprit] : cases)
        EXPECT_EQ(
            complaint(arguments), u"unknown argument \"%1\"; see lumora --help"_s.arg(culprit));
}

TEST(CommandLine, AnOptionWithoutItsValueIsNamed) {
    EXPECT_EQ(
        complaint({u"--demo"_s, u"--scenario"_s}),
        u"--scenario needs a value; see lumora --help"_s);
    EXPECT_EQ(
        complaint({u"status"_s, u"--format"_s}), u"--format needs a value; see lumora --help"_s);
}
