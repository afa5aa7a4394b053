#include "companion/fetching/Commands.h"

#include "support/Patience.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>
#include <signal.h>

#include <optional>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace lumora::tests;
using namespace std::chrono_literals;

namespace {

CommandOutcome outcomeOf(Commands& commands, const CommandRequest& request) {
    std::optional<CommandOutcome> outcome;
    commands.run(request, [&](const CommandOutcome& ended) { outcome = ended; });
    EXPECT_FALSE(outcome) << "from within the call";
    if (!QTest::qWaitFor([&] { return outcome.has_value(); }, patience))
        return tl::unexpected(u"(nothing)"_s);
    return *outcome;
}

CommandOutcome outcomeOf(const CommandRequest& request) {
    Commands commands;
    return outcomeOf(commands, request);
}

CommandRequest shell(const QString& script) {
    return {.words = {u"sh"_s, u"-c"_s, script}};
}

bool lives(pid_t process) {
    QFile status(u"/proc/%1/stat"_s.arg(process));
    return status.open(QFile::ReadOnly) && !status.readAll().contains(") Z ");
}

} // namespace

TEST(Commands, AnswerWhatTheProgramPrinted) {
    EXPECT_EQ(
        outcomeOf({.words = {u"printf"_s, u"%s|"_s, u"a b"_s, u"$HOME; *"_s}}), "a b|$HOME; *|");
    EXPECT_EQ(outcomeOf({.words = {u"cat"_s}, .input = "one\ntwo"}), "one\ntwo");
    EXPECT_EQ(outcomeOf({.words = {u"true"_s}, .input = QByteArray(1 << 20, 'x')}), "");
    EXPECT_EQ(outcomeOf(shell(u"echo warning >&2; echo fine"_s)), "fine\n");
}

TEST(Commands, SayWhyTheProgramFailed) {
    const auto reason = [](const CommandRequest& request) {
        const CommandOutcome outcome = outcomeOf(request);
        return outcome ? QString() : outcome.error();
    };
    EXPECT_EQ(reason(shell(u"exit 3"_s)), u"sh ended with 3"_s);
    EXPECT_EQ(
        reason(shell(u"printf '\\n\\033[31mno such account\\nsecond line' >&2; exit 1"_s)),
        u"sh: [31mno such account"_s);
    EXPECT_EQ(reason(shell(u"kill -SEGV $$"_s)), u"sh crashed"_s);
    EXPECT_EQ(reason({.words = {u"/nowhere/to/be-found"_s}}), u"be-found could not be started"_s);
}

TEST(Commands, EndWhatTakesTooLongWithAllThatItStarted) {
    QTemporaryDir folder;
    const QString file = folder.filePath(u"pid"_s);
    CommandRequest request = shell(u"sleep 1000 & echo $! >%1.new; mv %1.new %1; wait"_s.arg(file));
    request.longest = 300ms;
    EXPECT_EQ(outcomeOf(request).error(), u"sh did not end within 1 s"_s);
    QFile pid(file);
    ASSERT_TRUE(pid.open(QFile::ReadOnly));
    const pid_t sleeper = pid.readAll().trimmed().toInt();
    ASSERT_GT(sleeper, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !lives(sleeper); }, patience));
}

TEST(Commands, EndWhatPrintsTooMuch) {
    CommandRequest request{.words = {u"yes"_s}};
    request.largest = 10'000;
    EXPECT_EQ(outcomeOf(request).error(), u"yes printed more than 10000 bytes"_s);
    request.words = {u"head"_s, u"-c"_s, u"10000"_s, u"/dev/zero"_s};
    EXPECT_EQ(outcomeOf(request), QByteArray(10'000, '\0'));
}

TEST(Commands, RunBesideEachOther) {
    Commands commands;
    QTemporaryDir folder;
    std::optional<CommandOutcome> waiting;
    // Opening a pipe waits for the other end: neither ends without the other.
    ASSERT_EQ(outcomeOf(commands, {.words = {u"mkfifo"_s, folder.filePath(u"pipe"_s)}}), "");
    commands.run(
        {.words = {u"cat"_s, folder.filePath(u"pipe"_s)}},
        [&](const CommandOutcome& ended) { waiting = ended; });
    EXPECT_EQ(outcomeOf(commands, shell(u"echo hello >%1/pipe"_s.arg(folder.path()))), "");
    ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.has_value(); }, patience));
    EXPECT_EQ(*waiting, "hello\n");
}

TEST(Commands, TakeWhatRunsAlongWhenTheyGo) {
    bool isAnswered = false;
    {
        Commands commands;
        commands.run({.words = {u"sleep"_s, u"1000"_s}}, [&](const auto&) { isAnswered = true; });
    }
    drainEvents();
    EXPECT_FALSE(isAnswered);
}
