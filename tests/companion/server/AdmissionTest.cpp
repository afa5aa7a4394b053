#include "companion/server/Admission.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;

namespace {

constexpr auto token = "0123456789abcdef";

HttpRequest
request(const QByteArray& method, const QByteArray& target, const QByteArray& body = {}) {
    return {method, target, {{"host", "127.0.0.1:8764"}, {"x-api-key", token}}, body};
}

HttpRequest briefingFor(const QByteArray& host) {
    HttpRequest asked = request("GET", "/api/briefing");
    asked.headers.first().second = host;
    return asked;
}

/// The status of a refusal; 200 for whatever is admitted.
int statusOf(const HttpRequest& asked) {
    const Admission admission = admit(asked, token);
    const auto* answer = std::get_if<HttpAnswer>(&admission);
    if (!answer)
        return 200;
    const auto body = QJsonDocument::fromJson(answer->body);
    EXPECT_FALSE(body[u"error"_s].toString().isEmpty()) << answer->body.constData();
    return answer->status;
}

} // namespace

TEST(Admission, LetsTheOwnerIn) {
    EXPECT_EQ(admit(request("GET", "/api/briefing"), token), Admission(BriefingWanted{false}));
    EXPECT_EQ(admit(request("GET", "/api/briefing?x=1"), token), Admission(BriefingWanted{false}));
    EXPECT_EQ(admit(request("HEAD", "/api/briefing"), token), Admission(BriefingWanted{true}));
    EXPECT_EQ(
        admit(
            request("POST", "/api/briefing/action", R"({"type":"habit.toggle","id":"read"})"),
            token),
        Admission(ServiceAction(ToggleHabit{u"read"_s})));
}

TEST(Admission, IsForThisComputerAlone) {
    for (const QByteArray host :
         {"localhost", "LocalHost:8764", "127.0.0.1", "127.1.2.3:1", "[::1]", "[::1]:8764"})
        EXPECT_EQ(statusOf(briefingFor(host)), 200) << host.constData();
    for (const QByteArray host :
         {"", "example.org", "localhost.example.org", "127.0.0.1.example.org", "0.0.0.0",
          "192.168.1.2:8764", "127.0.0", "127.0.0.256", "127.0.0.+1", "127.0.0.0001", "[::2]",
          "[::1]x", "::1", "localhost:http", "localhost:80:80", "localhost:123456"})
        EXPECT_EQ(statusOf(briefingFor(host)), 403) << host.constData();
}

TEST(Admission, IsForNoWebPage) {
    for (const QByteArray name : {"origin", "sec-fetch-site"}) {
        HttpRequest asked = request("GET", "/api/briefing");
        asked.headers += {name, ""};
        EXPECT_EQ(statusOf(asked), 403) << name.constData();
    }
}

TEST(Admission, GreetsWhoOpensTheAddress) {
    HttpRequest opened{"GET", "/", {{"host", "127.0.0.1:8764"}}, {}};
    EXPECT_EQ(admit(opened, token), Admission(GreetingWanted{false}));
    opened.method = "HEAD";
    EXPECT_EQ(admit(opened, token), Admission(GreetingWanted{true}));
    opened.headers.emplaceBack("sec-fetch-site", "none");
    EXPECT_EQ(admit(opened, token), Admission(GreetingWanted{true}));
    opened.method = "POST";
    EXPECT_EQ(statusOf(opened), 405);
    for (const QByteArray from : {"cross-site", "same-site", "same-origin", ""}) {
        opened.headers.last().second = from;
        EXPECT_EQ(statusOf(opened), 403) << from.constData();
    }
    opened.headers.last() = {"origin", "null"};
    EXPECT_EQ(statusOf(opened), 403);
    // To whatever is behind the token, nobody comes in a browser.
    HttpRequest behind = request("GET", "/api/briefing");
    behind.headers.emplaceBack("sec-fetch-site", "none");
    EXPECT_EQ(statusOf(behind), 403);
}

TEST(Admission, KnowsItsPathsAndMethods) {
    for (const QByteArray target :
         {"", "//", "/api", "/favicon.ico", "/api/briefing/", "/api/briefing/actions", "*",
          "http://localhost/api/briefing", "/API/briefing"})
        EXPECT_EQ(statusOf(request("GET", target)), 404) << target.constData();
    const Admission refused = admit(request("GET", "/api/briefing/action"), token);
    ASSERT_TRUE(std::holds_alternative<HttpAnswer>(refused));
    EXPECT_EQ(std::get<HttpAnswer>(refused).status, 405);
    EXPECT_EQ(std::get<HttpAnswer>(refused).allow, "POST");
    EXPECT_EQ(statusOf(request("POST", "/api/briefing")), 405);
    EXPECT_EQ(statusOf(request("OPTIONS", "/api/briefing")), 405);
    EXPECT_EQ(statusOf(request("get", "/api/briefing")), 405);
}

TEST(Admission, NeedsTheToken) {
    for (const QByteArray given :
         {"", "0123456789abcde", "0123456789abcdef0", "0123456789abcdeF", "x123456789abcdef"}) {
        HttpRequest asked = request("GET", "/api/briefing");
        asked.headers.last().second = given;
        EXPECT_EQ(statusOf(asked), 401) << given.constData();
    }
    HttpRequest without = request("POST", "/api/briefing/action", "no JSON");
    without.headers.removeLast();
    EXPECT_EQ(statusOf(without), 401);
    EXPECT_EQ(statusOf(request("POST", "/api/briefing/action", "no JSON")), 400);
}

TEST(ServiceAction, IsReadFromItsBody) {
    EXPECT_EQ(
        parseAction(R"({"type":"chore.done","id":"a\u00e4","more":[1]})"),
        ServiceAction(FinishChore{u"aä"_s}));
    EXPECT_EQ(
        parseAction(R"({"text":"Call\nthe bank","type":"capture"})"),
        ServiceAction(Capture{u"Call\nthe bank"_s}));
    EXPECT_EQ(parseAction(R"({"type":"spending.refresh"})"), ServiceAction(RefreshSpending{}));
    EXPECT_EQ(
        parseAction(R"({"type":"capture","type":"habit.toggle","id":"a","id":"b"})"),
        ServiceAction(ToggleHabit{u"b"_s}));
}

TEST(ServiceAction, SaysWhatIsWrong) {
    for (const QByteArray body : {"", "{", "[]", "3", "\"a\"", "{} {}", "\xff"})
        EXPECT_EQ(parseAction(body).error(), u"The body is not a JSON object"_s)
            << body.constData();
    EXPECT_EQ(parseAction("{}").error(), u"The action needs a text \"type\""_s);
    EXPECT_EQ(parseAction(R"({"type":3})").error(), u"The action needs a text \"type\""_s);
    EXPECT_EQ(
        parseAction(R"({"type":"chore.done","id":3})").error(),
        u"The action needs a text \"id\""_s);
    EXPECT_EQ(
        parseAction(R"({"type":"capture","text":"a","text":null})").error(),
        u"The action needs a text \"text\""_s);
    EXPECT_EQ(parseAction(R"({"type":"dance"})").error(), u"There is no action \"dance\""_s);
}
