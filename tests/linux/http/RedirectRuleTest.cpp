#include "linux/http/RedirectRule.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

HttpRequest request(const QByteArray& method, const QString& url) {
    HttpRequest result{method, QUrl(url), {{"X-Api-Key", "T"}}, {}};
    if (method == "POST") {
        result.headers.emplaceBack("Content-Type", "application/json");
        result.body = "{}";
    }
    return result;
}

/// Where a GET of `from` is led by `location`; empty: nowhere.
QString led(const QString& from, const QByteArray& location) {
    const auto next = followRedirect(request("GET", from), 302, location, 0);
    return next ? next->url.toString() : QString();
}

} // namespace

TEST(RedirectRule, MethodAndBodyByStatus) {
    struct Row {
        int status;
        QByteArray method;
        QByteArray nextMethod; // empty: not followed
    };

    const Row rows[] = {
        {301, "GET", "GET"}, {301, "POST", "GET"},  {302, "GET", "GET"}, {302, "POST", "GET"},
        {303, "GET", "GET"}, {303, "POST", "GET"},  {307, "GET", "GET"}, {307, "POST", "POST"},
        {308, "GET", "GET"}, {308, "POST", "POST"}, {300, "GET", {}},    {304, "GET", {}},
        {305, "GET", {}},    {306, "GET", {}},      {309, "GET", {}},    {200, "GET", {}},
        {201, "POST", {}},   {404, "GET", {}},      {503, "GET", {}},
    };
    for (const Row& row : rows) {
        const HttpRequest sent = request(row.method, u"https://host/a"_s);
        const auto next = followRedirect(sent, row.status, "/b", 0);
        ASSERT_EQ(next.has_value(), !row.nextMethod.isEmpty()) << row.status;
        if (!next)
            continue;
        EXPECT_EQ(next->method, row.nextMethod) << row.status;
        EXPECT_EQ(next->url, QUrl(u"https://host/b"_s));
        if (row.nextMethod == row.method) {
            EXPECT_EQ(next->headers, sent.headers);
            EXPECT_EQ(next->body, sent.body);
        } else {
            const QList<QPair<QByteArray, QByteArray>> tokenAlone{{"X-Api-Key", "T"}};
            EXPECT_EQ(next->headers, tokenAlone);
            EXPECT_FALSE(next->body);
        }
    }
}

TEST(RedirectRule, StaysWithinSchemeHostAndPort) {
    EXPECT_EQ(led(u"https://host:8443/a"_s, "http://host:8443/b"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "https://host/b"), u"https://host/b"_s);
    EXPECT_EQ(led(u"https://host/a"_s, "https://HOST:443/b"), u"https://host:443/b"_s);
    EXPECT_EQ(led(u"https://host:443/a"_s, "https://host/b"), u"https://host/b"_s);
    EXPECT_EQ(led(u"http://host:80/a"_s, "http://host/b"), u"http://host/b"_s);
    EXPECT_EQ(led(u"http://host:8080/a"_s, "/b"), u"http://host:8080/b"_s);

    EXPECT_EQ(led(u"https://host/a"_s, "http://host/b"), QString());
    EXPECT_EQ(led(u"http://host/a"_s, "https://host/b"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "https://host:444/b"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "https://host.evil/b"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "https://www.host/b"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "//other/b"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "https://host@other/b"), QString());
    EXPECT_EQ(led(u"http://127.0.0.1:1/a"_s, "http://localhost:1/b"), QString());
}

TEST(RedirectRule, ResolvesRelativeAddresses) {
    EXPECT_EQ(led(u"https://host/a/b?q"_s, "c"), u"https://host/a/c"_s);
    EXPECT_EQ(led(u"https://host/a/b?q"_s, "../c?r=1"), u"https://host/c?r=1"_s);
    EXPECT_EQ(led(u"https://host/a?q"_s, "?r"), u"https://host/a?r"_s);
    EXPECT_EQ(led(u"https://host/a"_s, "//host/b"), u"https://host/b"_s);
}

TEST(RedirectRule, WithoutAnAddressTheAnswerStands) {
    EXPECT_EQ(led(u"https://host/a"_s, ""), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "http://host:99999/"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "/a b"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "javascript:x"), QString());
    EXPECT_EQ(led(u"https://host/a"_s, "file:///etc/passwd"), QString());
}

TEST(RedirectRule, TwentyAreEnough) {
    const HttpRequest sent = request("GET", u"https://host/a"_s);
    EXPECT_TRUE(followRedirect(sent, 302, "/b", 19));
    EXPECT_FALSE(followRedirect(sent, 302, "/b", 20));
}
