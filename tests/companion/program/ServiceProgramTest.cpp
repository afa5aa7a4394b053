#include "companion/program/ServiceHome.h"
#include "support/ScriptedServer.h"

#include <QDateTime>
#include <QJsonArray>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;
using namespace lumora::tests;

namespace {

/// An event today, whenever that is.
QByteArray calendarToday(const QByteArray& title) {
    const QByteArray today = QDate::currentDate().toString(u"yyyyMMdd"_s).toLatin1();
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:x\r\nBEGIN:VEVENT\r\nUID:1\r\n"
           "DTSTAMP:20250101T000000Z\r\nDTSTART;VALUE=DATE:" +
           today + "\r\nSUMMARY:" + title + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

QStringList titlesIn(const QJsonObject& briefing) {
    QStringList titles;
    for (const QJsonValue& event : briefing[u"eventsToday"_s].toArray())
        titles += event[u"title"_s].toString();
    return titles;
}

QJsonObject firstHabit(const QJsonObject& briefing) {
    return briefing[u"habits"_s][u"items"_s][0].toObject();
}

/// The last line that was complained.
QByteArray lastComplaint(ServiceHome& home) {
    return home.program().readAllStandardError().trimmed().split('\n').last();
}

} // namespace

TEST(ServiceProgram, GoesFromNothingToABriefing) {
    ServiceHome home;
    home.write(u"my.ics"_s, calendarToday("Market day"));
    const auto init = home.run(
        {u"init"_s, u"--calendar"_s, u"my.ics"_s, u"--habit=Read"_s, u"--chore=Plants:7"_s,
         u"--inbox=in.md"_s, u"--port=%1"_s.arg(home.port())});
    ASSERT_EQ(init.exitCode, 0) << init.err.constData();
    EXPECT_TRUE(init.out.contains("Address: " + home.endpoint().toEncoded() + '\n'));
    const auto check = home.run({u"check"_s});
    EXPECT_EQ(check.exitCode, 0) << check.err.constData();
    EXPECT_EQ(
        check.out, "my: 1 event today; read less than a minute ago\nHabits: 0 of 1 done today\n"
                   "Chores: 1 due\nInbox: set up\n");
    home.serve();
    const QByteArray token = init.out.split('\n').at(3).mid(9);
    QNetworkRequest request = home.request();
    request.setRawHeader("X-Api-Key", token);
    const auto answer = home.complete(home.network().get(request));
    EXPECT_EQ(answer.status, 200) << token.constData();
    EXPECT_EQ(titlesIn(answer.body), QStringList(u"Market day"_s));
    request.setRawHeader("X-Api-Key", "another");
    EXPECT_EQ(home.complete(home.network().get(request)).status, 401);
}

TEST(ServiceProgram, KeepsHabitsAndChoresInItsLog) {
    ServiceHome home;
    home.configure("[[habit]]\nid = \"read\"\n[[chore]]\nid = \"plants\"\ndays = 7\n");
    home.serve();
    const QJsonObject toggle{{u"type"_s, u"habit.toggle"_s}, {u"id"_s, u"read"_s}};
    EXPECT_EQ(home.act(toggle).status, 200);
    // The briefing has it as soon as the answer is there.
    EXPECT_TRUE(firstHabit(home.briefing())[u"done"_s].toBool());
    EXPECT_EQ(home.act({{u"type"_s, u"chore.done"_s}, {u"id"_s, u"plants"_s}}).status, 200);
    EXPECT_EQ(home.briefing()[u"chores"_s][u"count"_s].toInt(-1), 0);
    const auto unknown = home.act({{u"type"_s, u"chore.done"_s}, {u"id"_s, u"other"_s}});
    EXPECT_EQ(unknown.status, 404);
    EXPECT_EQ(unknown.body[u"error"_s].toString(), u"There is no chore \"other\""_s);
    EXPECT_EQ(home.act({{u"type"_s, u"habit.toggle"_s}, {u"id"_s, u"b"_s}}).status, 404);

    const QString log = u".local/share/lumora/service.log"_s;
    EXPECT_TRUE(home.contents(log).contains("\thabit\tread\t+1\n"));
    // Somebody takes it back in an editor.
    home.write(log, "# nothing\n");
    EXPECT_TRUE(home.comesToHave(
        [](const QJsonObject& briefing) { return !firstHabit(briefing)[u"done"_s].toBool(true); }));
}

TEST(ServiceProgram, CapturesAndSaysWhyNot) {
    ServiceHome home;
    home.configure("[capture]\nfile = \"~/notes/todo.txt\"\n");
    home.serve();
    const QJsonObject thought{{u"type"_s, u"capture"_s}, {u"text"_s, u"Call\nÄnne"_s}};
    EXPECT_EQ(home.act(thought).status, 200);
    const QByteArray line = QDate::currentDate().toString(Qt::ISODate).toLatin1() + " Call Änne\n";
    EXPECT_EQ(home.contents(u"notes/todo.txt"_s), line);
    const auto nothing = home.act({{u"type"_s, u"capture"_s}, {u"text"_s, u" "_s}});
    EXPECT_EQ(nothing.status, 409);
    EXPECT_EQ(nothing.body[u"error"_s].toString(), u"There is nothing to capture"_s);
}

TEST(ServiceProgram, AsksHledgerAgainWhenTheJournalChanges) {
    ServiceHome home;
    const QByteArray today = QDate::currentDate().toString(Qt::ISODate).toLatin1();
    const auto journal = [&](const QByteArray& amount) {
        home.write(
            u"my.journal"_s, today + " x\n    expenses:food  " + amount + " EUR\n    assets\n");
    };
    journal("12.5");
    home.configure("[spending]\nhledger = \"~/my.journal\"\n");
    home.serve();
    const auto isSpent = [](double amount) {
        return [amount](const QJsonObject& briefing) {
            return briefing[u"spending"_s][u"mtd"_s].toDouble() == amount;
        };
    };
    EXPECT_TRUE(home.comesToHave(isSpent(12.5)));
    journal("20");
    EXPECT_TRUE(home.comesToHave(isSpent(20)));
    EXPECT_EQ(
        home.act({{u"type"_s, u"spending.refresh"_s}}).body,
        (QJsonObject{{u"ok"_s, true}, {u"queued"_s, true}}));
    // The last good figures stay, and who asks is told why there are no newer ones.
    home.write(u"my.journal"_s, "nonsense here\n");
    const auto declined = home.act({{u"type"_s, u"spending.refresh"_s}}).body;
    EXPECT_FALSE(declined[u"queued"_s].toBool(true));
    EXPECT_TRUE(declined[u"reason"_s].toString().startsWith(u"hledger: "_s));
    EXPECT_TRUE(isSpent(20)(home.briefing()));
}

TEST(ServiceProgram, TakesItsPartsFromCommands) {
    ServiceHome home;
    home.write(
        u"habits.json"_s,
        R"({"done":0,"total":1,"items":[{"id":"a","name":"A","done":false,"count":0,"target":1,"streak":3}]})");
    home.configure(R"(
[habits]
command = ["cat", "habits.json"]
act = ["sh", "-c", "sed -i s/false/true/ habits.json; echo \"$0\" >>acted"]
[chores]
command = ["printf", "%s", '{"count":1,"top":[{"id":"c","name":"C","room":""}]}']
[focus]
command = ["echo", '{"productiveShare": 0.25}']
[spending]
command = ["sh", "-c", "echo out of order >&2; exit 1"]
)");
    home.program().setWorkingDirectory(home.path({}));
    home.serve();
    EXPECT_TRUE(home.comesToHave([](const QJsonObject& briefing) {
        return firstHabit(briefing)[u"streak"_s].toInt() == 3 &&
               briefing[u"focus"_s][u"productiveShare"_s].toDouble() == 0.25 &&
               briefing[u"chores"_s][u"count"_s].toInt() == 1;
    }));
    EXPECT_FALSE(home.briefing().contains(u"spending"_s));
    EXPECT_EQ(home.act({{u"type"_s, u"habit.toggle"_s}, {u"id"_s, u"a"_s}}).status, 200);
    EXPECT_TRUE(firstHabit(home.briefing())[u"done"_s].toBool());
    EXPECT_EQ(home.contents(u"acted"_s), "a\n");
    EXPECT_EQ(home.act({{u"type"_s, u"habit.toggle"_s}, {u"id"_s, u"-x"_s}}).status, 404);
    const auto refused = home.act({{u"type"_s, u"chore.done"_s}, {u"id"_s, u"c"_s}});
    EXPECT_EQ(
        refused.body[u"error"_s].toString(), u"The command behind this list takes no clicks"_s);
    EXPECT_EQ(
        home.act({{u"type"_s, u"spending.refresh"_s}}).body[u"reason"_s].toString(),
        u"sh: out of order"_s);
}

TEST(ServiceProgram, AsksActivityWatch) {
    // Written from its documentation.
    ScriptedServer server([](QTcpSocket& connection, const QByteArray& request) {
        const bool isQuery = request.startsWith("POST /api/0/query/ ");
        const QByteArray times =
            R"([[{"duration": 30, "data": {"$category": ["Work"]}},
                 {"duration": 10, "data": {"$category": ["Uncategorized"]}}]])";
        const QByteArray classes =
            R"([{"name": ["Work"], "rule": {"type": "regex", "regex": "Docs"}}])";
        connection.write(ScriptedServer::answer("200 OK", isQuery ? times : classes));
        connection.disconnectFromHost();
    });
    ServiceHome home;
    home.configure(
        "[focus]\nactivitywatch = \"" + server.url({}).toEncoded() +
        "\"\nproductive = [\"Work\"]\n");
    home.serve();
    EXPECT_TRUE(home.comesToHave([](const QJsonObject& briefing) {
        return briefing[u"focus"_s][u"productiveShare"_s].toDouble() == 0.75;
    }));
    ASSERT_EQ(server.requests().size(), 2);
    EXPECT_TRUE(server.requests().first().startsWith("GET /api/0/settings/classes HTTP"));
}

TEST(ServiceProgram, FollowsItsConfiguration) {
    ServiceHome home;
    home.configure("[[habit]]\nid = \"read\"\n");
    home.serve();
    EXPECT_EQ(firstHabit(home.briefing())[u"name"_s].toString(), u"read"_s);
    home.configure("[[habit]]\nid = \"read\"\nname = \"Read a book\"\n");
    EXPECT_TRUE(home.comesToHave([](const QJsonObject& briefing) {
        return firstHabit(briefing)[u"name"_s].toString() == u"Read a book"_s;
    }));
    // One with faults changes nothing.
    home.configure("[[habit]]\nname = \"Walk\"\n");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            home.program().waitForReadyRead(10);
            return home.program().bytesAvailable() > 0 || !lastComplaint(home).isEmpty();
        },
        patience));
    EXPECT_EQ(firstHabit(home.briefing())[u"name"_s].toString(), u"Read a book"_s);
}

TEST(ServiceProgram, SaysWhyItDoesNotRun) {
    ServiceHome home;
    const auto none = home.run({u"run"_s});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(
        none.err, "lumora-service: there is no ~/.config/lumora/service.toml; "
                  "\"lumora-service init\" writes one\n");
    home.configure("color = \"red\"\n");
    EXPECT_EQ(
        home.run({u"check"_s}).err,
        "lumora-service: ~/.config/lumora/service.toml: line 3: color: is not known here\n");
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost, home.port()));
    home.configure("");
    EXPECT_EQ(
        home.run({u"run"_s}).err,
        "lumora-service: port " + QByteArray::number(home.port()) + " is already in use\n");
    EXPECT_EQ(home.run({u"dance"_s}).exitCode, 2);
    EXPECT_TRUE(home.run({u"--help"_s}).out.startsWith("Usage: lumora-service init "));
    EXPECT_TRUE(home.run({u"--version"_s}).out.startsWith("lumora-service 0."));
}

TEST(ServiceProgram, ChecksWithoutNamingAddresses) {
    ServiceHome home;
    home.configure(R"([[calendar]]
name = "Work"
url = "http://127.0.0.1:9/secret-address/basic.ics"
[spending]
command = ["false"]
)");
    const auto check = home.run({u"check"_s});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_TRUE(check.out.startsWith("Work: 0 events today; not read yet; "))
        << check.out.constData();
    EXPECT_TRUE(check.out.contains("Spending: not read yet; false ended with 1\n"));
    EXPECT_FALSE((check.out + check.err).contains("secret-address"));
}
