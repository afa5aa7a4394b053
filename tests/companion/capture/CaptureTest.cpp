#include "companion/capture/CapturedLine.h"
#include "companion/capture/Inbox.h"
#include "support/Patience.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace lumora::tests;
using namespace std::chrono_literals;

namespace {

const QDate today(2025, 3, 4);
constexpr std::chrono::sys_seconds noon = std::chrono::sys_days(2025y / 3 / 4) + 12h;

class Inboxes : public testing::Test {
protected:
    QTemporaryDir folder;
    const QString path = folder.filePath(u"inbox"_s);
    Commands commands;

    /// Whether the thought was taken, or why not.
    static QString outcomeOf(Inbox& inbox, const QString& text, std::chrono::sys_seconds now) {
        std::optional<Inbox::Outcome> outcome;
        inbox.keep(text, now, today, [&](const Inbox::Outcome& kept) { outcome = kept; });
        if (!QTest::qWaitFor([&] { return outcome.has_value(); }, patience))
            return u"(nothing)"_s;
        return *outcome ? u"taken"_s : outcome->error();
    }

    QByteArray contents() const {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

TEST(CapturedLine, IsOneLineWhateverWasTyped) {
    EXPECT_EQ(thoughtLine(u"Call the bank"_s), u"Call the bank"_s);
    EXPECT_EQ(
        thoughtLine(u"\n one\r\ntwo\nthree\u2028four\t\u0085five\u001b \n"_s),
        u"one two three four  five"_s);
    EXPECT_EQ(thoughtLine(u" \n\t "_s), std::nullopt);
    EXPECT_EQ(thoughtLine({}), std::nullopt);
}

TEST(CapturedLine, IsInTheFormOfItsFile) {
    EXPECT_EQ(capturedLine(u"Ä"_s, CaptureFormat::Markdown, today), "- [ ] Ä\n");
    EXPECT_EQ(capturedLine(u"Ä"_s, CaptureFormat::TodoTxt, today), "2025-03-04 Ä\n");
    EXPECT_EQ(capturedLine(u"Ä"_s, CaptureFormat::Org, today), "* TODO Ä\n");
    EXPECT_EQ(capturedLine(u"Ä"_s, CaptureFormat::Plain, today), "Ä\n");
}

TEST_F(Inboxes, KeepThoughtsInAFile) {
    Inbox inbox(CaptureFile{path, CaptureFormat::Markdown}, commands);
    EXPECT_EQ(outcomeOf(inbox, u"one\n- [x] two"_s, noon), u"taken"_s);
    EXPECT_EQ(outcomeOf(inbox, u"three"_s, noon), u"taken"_s);
    EXPECT_EQ(contents(), "- [ ] one - [x] two\n- [ ] three\n");
    EXPECT_EQ(outcomeOf(inbox, u" "_s, noon), u"There is nothing to capture"_s);
}

TEST_F(Inboxes, KeepARepeatedThoughtOnce) {
    Inbox inbox(CaptureFile{path, CaptureFormat::Plain}, commands);
    EXPECT_EQ(outcomeOf(inbox, u"one"_s, noon), u"taken"_s);
    EXPECT_EQ(outcomeOf(inbox, u"one"_s, noon + 1s), u"taken"_s);
    EXPECT_EQ(contents(), "one\n");
    EXPECT_EQ(outcomeOf(inbox, u"one"_s, noon + 2s), u"taken"_s);
    EXPECT_EQ(contents(), "one\none\n");
}

TEST_F(Inboxes, HandThoughtsToACommand) {
    Inbox inbox(CommandLine{u"sh"_s, u"-c"_s, u"cat >>\"$0\""_s, path}, commands);
    EXPECT_EQ(outcomeOf(inbox, u"$(one) `two`"_s, noon), u"taken"_s);
    EXPECT_EQ(contents(), "$(one) `two`\n");
}

TEST_F(Inboxes, SayWhyAThoughtIsLostAndTakeItAgain) {
    ASSERT_TRUE(QDir().mkdir(path));
    Inbox file(CaptureFile{path, CaptureFormat::Plain}, commands);
    EXPECT_EQ(outcomeOf(file, u"one"_s, noon), path + u": Is a directory"_s);
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_EQ(outcomeOf(file, u"one"_s, noon), u"taken"_s);
    EXPECT_EQ(contents(), "one\n");

    Inbox command(CommandLine{u"sh"_s, u"-c"_s, u"echo no room >&2; exit 1"_s}, commands);
    EXPECT_EQ(outcomeOf(command, u"one"_s, noon), u"sh: no room"_s);
    EXPECT_EQ(outcomeOf(command, u"one"_s, noon), u"sh: no room"_s);

    Inbox nowhere({}, commands);
    EXPECT_FALSE(nowhere.isThere());
    EXPECT_EQ(
        outcomeOf(nowhere, u"one"_s, noon), u"There is no place for thoughts; see [capture]"_s);
}
