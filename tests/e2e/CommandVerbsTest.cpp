#include "e2e/ConfiguredProgram.h"
#include "e2e/NotingBrowser.h"
#include "support/PrivateDisplay.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gmock/gmock.h>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using Outcome = ProgramHarness::Outcome;

/// A user who works from a terminal.
class CommandVerbs : public ConfiguredProgram {
protected:
    void startLoaded() {
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    }

    /// Runs a command, which has nothing to say.
    void succeed(const QStringList& arguments) {
        const auto outcome = lumora.run(arguments);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "");
    }

    void expectRefusal(const QStringList& arguments, const QByteArray& reason) {
        const auto outcome = lumora.run(arguments);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "lumora: " + reason + '\n');
    }

    QJsonObject habit(const QString& id) {
        const auto habits = service.briefing().value(u"habits"_s).toObject();
        for (const QJsonValue item : habits.value(u"items"_s).toArray()) {
            if (item[u"id"_s] == id)
                return item.toObject();
        }
        return {};
    }

    qsizetype choresDue() {
        return service.briefing().value(u"chores"_s).toObject().value(u"count"_s).toInteger();
    }
};

/// The same user at a screen, without which nothing can be opened.
class CommandVerbsOnADisplay : public CommandVerbs {
protected:
    void SetUp() override {
        CommandVerbs::SetUp();
        lumora.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        lumora.setVariable(u"DISPLAY"_s, QString::fromLatin1(display.name()));
    }

    void TearDown() override { lumora.end(); }

    PrivateDisplay display;
    NotingBrowser browser{lumora};
};

} // namespace

TEST_F(CommandVerbs, NeedAProgramThatRuns) {
    for (const QString& command :
         {u"join"_s, u"capture x"_s, u"capture"_s, u"habit x"_s, u"habit --list"_s, u"chore x"_s,
          u"agenda"_s, u"agenda --format json"_s}) {
        const auto outcome = lumora.run(command.split(u' '));
        EXPECT_EQ(outcome.exitCode, 3) << command.toStdString();
        EXPECT_EQ(outcome.err, "lumora: Lumora is not running\n");
    }
}

TEST_F(CommandVerbs, NeedArgumentsThatMakeSense) {
    for (const QString& command :
         {u"join now"_s, u"habit"_s, u"chore"_s, u"habit --all"_s, u"agenda x"_s,
          u"agenda --format=polybar"_s, u"capture --loud"_s, u"status --follow x"_s}) {
        const auto outcome = lumora.run(command.split(u' '));
        EXPECT_EQ(outcome.exitCode, 2) << command.toStdString();
        EXPECT_TRUE(outcome.err.startsWith("lumora: "));
        EXPECT_EQ(outcome.err.count('\n'), 1);
    }
}

TEST_F(CommandVerbs, NeedABriefing) {
    service.control({{u"scenario"_s, u"unauthorized"_s}});
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));
    for (const QString& command : {u"join"_s, u"habit read"_s, u"chore bins"_s, u"agenda"_s})
        expectRefusal(command.split(u' '), "Token rejected (401)");
}

TEST_F(CommandVerbs, CaptureReturnsWhenTheServiceHasTakenIt) {
    startLoaded();
    succeed({u"capture"_s, u"buy"_s, u"milk"_s});
    EXPECT_EQ(service.inbox(), QStringList(u"buy milk"_s));
    succeed({u"capture"_s, u"--"_s, u"-- \u201eso\u201c $(id) 100%"_s});
    EXPECT_EQ(service.inbox().value(1), u"-- \u201eso\u201c $(id) 100%"_s);

    expectRefusal({u"capture"_s, u" \t"_s}, "There is nothing to capture");
    expectRefusal({u"capture"_s}, "There is nothing to capture"); // there is no input
    service.control({{u"scenario"_s, u"unauthorized"_s}});
    expectRefusal({u"capture"_s, u"lost"_s}, "Token rejected (401)");
    EXPECT_EQ(service.inbox().size(), 2);
}

TEST_F(CommandVerbs, CaptureReadsStandardInput) {
    startLoaded();
    const auto capture = [this](const QByteArray& input) {
        const auto process = lumora.makeProcess();
        process->setStandardInputFile(QString());
        process->setArguments({u"capture"_s});
        process->start();
        process->write(input);
        process->closeWriteChannel();
        return ProgramHarness::finish(*process);
    };
    EXPECT_EQ(capture("first line\nsecond \xc3\xa4\n").exitCode, 0);
    EXPECT_EQ(service.inbox(), QStringList(u"first line\nsecond \u00e4"_s));
    const Outcome tooLong = capture(QByteArray(70'000, 'x'));
    EXPECT_EQ(tooLong.exitCode, 1);
    EXPECT_EQ(tooLong.err, "lumora: The text is too long\n");
    EXPECT_EQ(service.inbox().size(), 1);
}

TEST_F(CommandVerbs, AHabitIsToggledByIdOrName) {
    startLoaded();
    succeed({u"habit"_s, u"read"_s});
    EXPECT_EQ(habit(u"read"_s).value(u"count"_s), 1);
    succeed({u"habit"_s, u"READ"_s, u"twenty"_s, u"pages"_s});
    EXPECT_EQ(habit(u"read"_s).value(u"count"_s), 0);
    expectRefusal({u"habit"_s, u"sleep"_s}, "There is no habit \"sleep\"");
    expectRefusal({u"habit"_s, u"\u001b[2Jkettle"_s}, "There is no habit \" [2Jkettle\"");
}

TEST_F(CommandVerbs, AChoreIsDoneByIdOrName) {
    startLoaded();
    const auto before = choresDue();
    succeed({u"chore"_s, u"kettle"_s});
    succeed({u"chore"_s, u"water the plants"_s});
    EXPECT_EQ(choresDue(), before - 2);
    expectRefusal({u"chore"_s, u"kettle"_s}, "There is no chore \"kettle\"");
}

TEST_F(CommandVerbs, TheAgendaIsForPeopleAndForPrograms) {
    startLoaded();
    const auto text = lumora.run({u"agenda"_s});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_TRUE(text.out.startsWith("Events: "));
    EXPECT_TRUE(text.out.contains("\nHabits: 1/5 done\n"));
    EXPECT_TRUE(text.out.contains("\n  [ ] Glass of water · 2/8\n")) << text.out.toStdString();
    EXPECT_TRUE(text.out.contains("\n  Descale the kettle · Kitchen · 5d over\n"));

    const auto json = lumora.run({u"agenda"_s, u"--format"_s, u"json"_s});
    EXPECT_EQ(json.exitCode, 0);
    EXPECT_EQ(json.out.count('\n'), 1);
    const QJsonObject agenda = QJsonDocument::fromJson(json.out).object();
    EXPECT_EQ(agenda.value(u"habits"_s).toObject().value(u"total"_s), 5);
    for (const QByteArray& secret :
         {QByteArray("https://"), QByteArray("1483"), QByteArray("412.35"), service.token()})
        EXPECT_FALSE(json.out.contains(secret)) << secret.toStdString();
}

TEST_F(CommandVerbs, ListsAreForCompletion) {
    startLoaded();
    EXPECT_EQ(
        lumora.run({u"habit"_s, u"--list"_s}).out,
        "stretch\tMorning stretch\nwater\tGlass of water\nread\tRead twenty pages\n"
        "walk\tWalk outside\nlanguage\tLanguage lesson\n");
    EXPECT_TRUE(
        lumora.run({u"chore"_s, u"--list"_s}).out.startsWith("kettle\tDescale the kettle\n"));
}

TEST_F(CommandVerbsOnADisplay, JoinOpensTheMeeting) {
    startLoaded();
    succeed({u"join"_s});
    EXPECT_TRUE(QTest::qWaitFor([&] { return browser.opened().size() == 1; }, patience));
    EXPECT_TRUE(browser.opened().value(0).startsWith("https://"));

    service.control({{u"shiftDaySeconds"_s, -20 * 60 * 60}});
    succeed({u"refresh"_s});
    expectRefusal({u"join"_s}, "There is no meeting with a link that may be opened");
    EXPECT_EQ(browser.opened().size(), 1);
}
