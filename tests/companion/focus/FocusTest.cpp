#include "companion/focus/ActivityFocus.h"
#include "companion/focus/ActivityQuery.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

constexpr std::chrono::sys_seconds morning = std::chrono::sys_days(2025y / 3 / 4) + 5h;

constexpr auto classes = R"([
  {"id": 0, "name": ["Work"], "rule": {"type": "regex", "regex": "Docs|\\.odt", "ignore_case": true},
   "data": {"color": "#0F0", "score": 10}},
  {"id": 1, "name": ["Work", "Chat"], "rule": {"type": "regex", "regex": "Chat"},
   "data": {"score": -2}},
  {"id": 2, "name": ["Media"], "rule": {"type": "none"}},
  {"id": 3, "name": ["Odd"], "rule": {"type": "regex", "regex": "a;b"}}
])";

constexpr auto times = R"([[
  {"timestamp": "x", "duration": 30.5, "data": {"$category": ["Work", "Writing"]}},
  {"timestamp": "x", "duration": 9.5, "data": {"$category": ["Work", "Chat"]}},
  {"timestamp": "x", "duration": 60, "data": {"$category": ["Uncategorized"]}}
]])";

/// A server written from ActivityWatch's documentation.
class FakeActivityWatch final : public Web {
public:
    void send(WebRequest request, std::function<void(WebOutcome)> done) override {
        requests += request;
        const bool isQuery = request.url.path().endsWith(u"/api/0/query/"_s);
        if (!error.isEmpty())
            return done(tl::unexpected(error));
        done(WebAnswer{isQuery ? queryStatus : 200, isQuery ? times : classes, {}, {}});
    }

    QList<WebRequest> requests;
    QString error;
    int queryStatus = 200;
};

PartOutcome<FocusPart> ask(FakeActivityWatch& server, const QStringList& productive) {
    std::optional<PartOutcome<FocusPart>> answer;
    const auto question = activityFocus(
        {QUrl(u"http://localhost:5600/"_s), productive}, server,
        [](std::chrono::sys_seconds now) { return now - 2h; });
    question(morning, [&](const auto& part) { answer = part; });
    return answer.value_or(tl::unexpected(u"(nothing)"_s));
}

} // namespace

TEST(ActivityQuery, ReadsTheServersCategories) {
    EXPECT_EQ(
        categoriesIn(classes), (std::vector<ActivityCategory>{
                                   {{u"Work"_s}, u"Docs|\\.odt"_s, true, 10},
                                   {{u"Work"_s, u"Chat"_s}, u"Chat"_s, false, -2},
                                   {{u"Media"_s}, {}, false, std::nullopt},
                                   {{u"Odd"_s}, u"a;b"_s, false, std::nullopt}}));
    EXPECT_FALSE(categoriesIn("null"));
    EXPECT_FALSE(categoriesIn("<html>"));
}

TEST(ActivityQuery, AsksForTheTimeInEachCategory) {
    const auto body =
        QJsonDocument::fromJson(activityQuery(*categoriesIn(classes), morning, morning + 1h + 1s));
    EXPECT_EQ(
        body[u"timeperiods"_s].toArray(),
        QJsonArray{u"2025-03-04T05:00:00+00:00/2025-03-04T06:00:01+00:00"_s});
    QStringList statements;
    for (const QJsonValue& statement : body[u"query"_s].toArray())
        statements += statement.toString();
    EXPECT_THAT(
        statements,
        ElementsAre(
            u"afk = query_bucket(find_bucket(\"aw-watcher-afk_\"));"_s,
            u"win = query_bucket(find_bucket(\"aw-watcher-window_\"));"_s,
            u"win = filter_period_intersect(win, filter_keyvals(afk, \"status\", [\"not-afk\"]));"_s,
            // Its backslash stands once, and what would end the statement is left out.
            u"win = categorize(win, [[[\"Work\"],{\"ignore_case\":true,"
            "\"regex\":\"Docs|\\.odt\",\"type\":\"regex\"}],[[\"Work\",\"Chat\"],"
            "{\"ignore_case\":false,\"regex\":\"Chat\",\"type\":\"regex\"}]]);"_s,
            u"RETURN = merge_events_by_keys(win, [\"$category\"]);"_s));
}

TEST(ActivityQuery, ReadsTimes) {
    const auto read = timesIn(times);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->front(), (ActivityTime{{u"Work"_s, u"Writing"_s}, 30.5}));
    EXPECT_EQ(timesIn("[[]]"), std::vector<ActivityTime>());
    for (const QByteArray other : {"{}", "[]", "[3]", R"([[{"duration": -1}]])", R"([[{}]])"})
        EXPECT_FALSE(timesIn(other)) << other.constData();
}

TEST(ActivityQuery, KnowsWhatIsProductive) {
    const auto read = *timesIn(times);
    const auto categories = *categoriesIn(classes);
    // Writing is as productive as work is; chatting is not.
    EXPECT_EQ(focusFrom(read, categories, {}), FocusPart{0.305});
    EXPECT_EQ(focusFrom(read, categories, {u"Work"_s}), FocusPart{0.4});
    EXPECT_EQ(focusFrom(read, categories, {u"Work>Chat"_s}), FocusPart{0.095});
    EXPECT_EQ(
        focusFrom(read, categories, {u"Work > Chat"_s, u"Uncategorized"_s}), FocusPart{0.695});
    EXPECT_EQ(focusFrom(read, categories, {u"Wor"_s}), FocusPart{0});
    EXPECT_EQ(focusFrom({}, categories, {}), FocusPart{});
}

TEST(ActivityFocus, AsksTwiceAndAnswers) {
    FakeActivityWatch server;
    EXPECT_EQ(ask(server, {u"Work"_s}), FocusPart{0.4});
    ASSERT_EQ(server.requests.size(), 2);
    EXPECT_EQ(server.requests[0].url, QUrl(u"http://localhost:5600/api/0/settings/classes"_s));
    EXPECT_EQ(server.requests[0].body, std::nullopt);
    EXPECT_EQ(server.requests[1].url, QUrl(u"http://localhost:5600/api/0/query/"_s));
    EXPECT_EQ(
        server.requests[1].body, activityQuery(*categoriesIn(classes), morning - 2h, morning));
}

TEST(ActivityFocus, SaysWhyNot) {
    FakeActivityWatch server;
    server.queryStatus = 500;
    EXPECT_EQ(ask(server, {}).error(), u"ActivityWatch answered 500"_s);
    server.error = u"nobody listens"_s;
    EXPECT_EQ(ask(server, {}).error(), u"ActivityWatch: nobody listens"_s);
}
