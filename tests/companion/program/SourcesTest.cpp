#include "companion/program/Sources.h"

#include "companion/program/Actions.h"
#include "companion/program/CheckReport.h"
#include "support/Patience.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace lumora::tests;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::sys_seconds noon = std::chrono::sys_days(2025y / 3 / 4) + 12h;

class SourcesOfOneDay : public testing::Test {
protected:
    QTemporaryDir folder;
    std::chrono::sys_seconds now = noon;
    ServiceSettings settings;
    std::unique_ptr<Sources> sources;

    void SetUp() override { settings.logPath = folder.filePath(u"log"_s); }

    void make() {
        sources = std::make_unique<Sources>(
            settings, SourceSurroundings{
                          [this] { return now; }, [] { return QTimeZone("Europe/Berlin"); },
                          QDBusConnection(u"none"_s)});
        refresh();
    }

    /// Asks what is due and waits for the answers.
    void refresh() {
        sources->refreshDue();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !sources->isAsking(); }, patience));
    }

    HttpAnswer act(const ServiceAction& action) {
        std::optional<HttpAnswer> answer;
        perform(action, *sources, [&](const HttpAnswer& answered) { answer = answered; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, patience));
        return answer.value_or(HttpAnswer{.status = 0, .body = {}, .allow = {}, .headOnly = false});
    }

    QByteArray contents(const QString& name) const {
        QFile file(folder.filePath(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
    }
};

} // namespace

TEST_F(SourcesOfOneDay, EndTheDayWhereTheUserIs) {
    settings.habits = {{u"read"_s, u"Read"_s, 1}};
    settings.dayEnds = 3h;
    now = std::chrono::sys_days(2025y / 3 / 5) + 1h + 59min; // 2:59 in Berlin
    make();
    EXPECT_EQ(sources->today(), QDate(2025, 3, 5));
    EXPECT_EQ(sources->habitDay(), QDate(2025, 3, 4));
    EXPECT_EQ(act(ToggleHabit{u"read"_s}).status, 200);
    EXPECT_EQ(contents(u"log"_s), "2025-03-05T02:59:00+01:00\thabit\tread\t+1\n");
    EXPECT_TRUE(sources->parts().habits.items.front().done);
    now += 1min;
    EXPECT_FALSE(sources->parts().habits.items.front().done);
    EXPECT_EQ(sources->parts().habits.items.front().streak, 1);
}

TEST_F(SourcesOfOneDay, TakeARepeatedClickForOne) {
    settings.habits = {{u"read"_s, u"Read"_s, 1}};
    write(u"chores"_s, R"({"count":1,"top":[{"id":"c","name":"C","room":""}]})");
    settings.choresCommand = ListCommand{
        {u"cat"_s, folder.filePath(u"chores"_s)},
        {u"sh"_s, u"-c"_s,
         u"echo \"$0\" >>%1; test ! -e %1.full"_s.arg(folder.filePath(u"done"_s))}};
    make();
    for (int click = 0; click < 2; ++click) {
        EXPECT_EQ(act(ToggleHabit{u"read"_s}).status, 200);
        EXPECT_EQ(act(FinishChore{u"c"_s}).status, 200);
    }
    EXPECT_TRUE(sources->parts().habits.items.front().done);
    EXPECT_EQ(contents(u"done"_s), "c\n");
    now += 2s;
    EXPECT_EQ(act(FinishChore{u"c"_s}).status, 200);
    EXPECT_EQ(contents(u"done"_s), "c\nc\n");
    // One that came to nothing may be repeated at once.
    now += 2s;
    write(u"done.full"_s, "");
    EXPECT_EQ(act(FinishChore{u"c"_s}).status, 409);
    ASSERT_TRUE(QFile::remove(folder.filePath(u"done.full"_s)));
    EXPECT_EQ(act(FinishChore{u"c"_s}).status, 200);
    EXPECT_EQ(contents(u"done"_s), "c\nc\nc\nc\n");
}

TEST_F(SourcesOfOneDay, KeepWhatWasGoodAndTellOfTrouble) {
    write(u"focus"_s, R"({"productiveShare": 0.5})");
    settings.focus = CommandLine{u"cat"_s, folder.filePath(u"focus"_s)};
    settings.habitsCommand = ListCommand{{u"echo"_s, u"[]"_s}, {}};
    make();
    EXPECT_EQ(sources->parts().focus, FocusPart{0.5});
    const std::vector<Trouble> habits{{u"Habits"_s, noon}};
    EXPECT_EQ(sources->parts().troubles, habits);
    EXPECT_EQ(sources->parts().habits, HabitsPart());
    write(u"focus"_s, "{");
    now += 5min;
    refresh();
    EXPECT_EQ(sources->parts().focus, FocusPart{0.5});
    EXPECT_EQ(sources->parts().troubles.size(), 2U);
    now += 10min;
    const CheckReport report = checkReport(*sources);
    EXPECT_EQ(
        report.text, u"Habits: not read yet; echo: The document must be an object\n"
                     "Focus: read 15 minutes ago; cat: That is no JSON\n"_s);
    EXPECT_FALSE(report.isFine);
    write(u"focus"_s, R"({"productiveShare": 0.6})");
    refresh();
    EXPECT_EQ(sources->parts().focus, FocusPart{0.6});
    EXPECT_EQ(sources->parts().troubles, habits);
}

TEST_F(SourcesOfOneDay, SayThatYesterdaysFiguresAreOld) {
    write(u"a.journal"_s, "2025-03-04 x\n    expenses:food  5 EUR\n    assets\n");
    settings.spending = JournalSettings{folder.filePath(u"a.journal"_s), {}, {}};
    now = std::chrono::sys_days(2025y / 3 / 4) + 22h + 59min;
    make();
    EXPECT_EQ(sources->parts().spending->mtd, 5);
    EXPECT_FALSE(sources->parts().spending->stale);
    now += 1min; // midnight in Berlin
    EXPECT_TRUE(sources->parts().spending->stale);
    refresh(); // a new day asks at once
    EXPECT_FALSE(sources->parts().spending->stale);
    EXPECT_EQ(sources->parts().spending->asOf, u"2025-03-05"_s);
}

TEST_F(SourcesOfOneDay, RefuseWhatTheyDoNotHave) {
    make();
    EXPECT_EQ(act(ToggleHabit{u"read"_s}).status, 404);
    EXPECT_EQ(act(FinishChore{u"c"_s}).status, 404);
    EXPECT_EQ(act(Capture{u"a"_s}).status, 409);
    EXPECT_EQ(
        act(RefreshSpending{}).body,
        R"({"ok":true,"queued":false,"reason":"No spending is set up"})");
    EXPECT_EQ(checkReport(*sources).text, u"No source is set up yet\n"_s);
    settings.habits = {{u"read"_s, u"Read"_s, 1}};
    settings.logPath = folder.path();
    make();
    EXPECT_EQ(act(ToggleHabit{u"read"_s}).status, 409);
    EXPECT_FALSE(checkReport(*sources).isFine);
}
