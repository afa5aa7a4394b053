#include "demo/DemoHttp.h"

#include <gtest/gtest.h>

using namespace lumora;

namespace {

/// The HTTP status that refuses these bytes; 0: they are not refused, or not yet.
int refusal(const QByteArray& received) {
    const auto request = demoRequestFrom(received);
    return request ? 0 : request.error();
}

QByteArray headerLines(const QByteArray& lines) {
    return "POST / HTTP/1.1\r\n" + lines + "\r\n\r\n";
}

} // namespace

TEST(DemoHttpTest, ARequest) {
    const auto request = demoRequestFrom("POST /control?x=1 HTTP/1.1\r\nHost: localhost\r\n"
                                         "x-api-KEY:  key \r\nContent-Length: 4\r\n\r\n\r\nab...");
    ASSERT_TRUE(request && *request);
    EXPECT_EQ((*request)->method, "POST");
    EXPECT_EQ((*request)->path, "/control");
    EXPECT_EQ((*request)->token, "key");
    EXPECT_EQ((*request)->body, "\r\nab");
}

TEST(DemoHttpTest, WithoutHeadersAndEscaped) {
    const auto request = demoRequestFrom("GET /api/brief%69ng HTTP/1.0\r\n\r\n");
    ASSERT_TRUE(request && *request);
    EXPECT_EQ((*request)->path, "/api/briefing");
    EXPECT_EQ((*request)->token, "");
    EXPECT_EQ((*request)->body, "");
}

TEST(DemoHttpTest, EveryPartOfARequestAsksForMore) {
    const QByteArray whole = "PUT / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc";
    for (qsizetype size = 0; size < whole.size(); ++size) {
        const auto request = demoRequestFrom(whole.left(size));
        ASSERT_TRUE(request) << size;
        EXPECT_FALSE(*request) << size;
    }
    EXPECT_TRUE(*demoRequestFrom(whole));
}

TEST(DemoHttpTest, WhatIsNotHttp) {
    for (const QByteArray line :
         {"", "GET /", "GET / HTTP/2.0", "BREW /pot COFFEE/1.0", " / HTTP/1.1",
          "GET /a b HTTP/1.1"})
        EXPECT_EQ(refusal(line + "\r\n\r\n"), 400) << line.toStdString();
    for (const QByteArray lines :
         {"no colon", ": no name", "Content-Length: -1", "Content-Length: 1x", "Content-Length:"})
        EXPECT_EQ(refusal(headerLines(lines)), 400) << lines.toStdString();
}

TEST(DemoHttpTest, WhatIsTooMuchIsRefusedBeforeItIsThere) {
    EXPECT_EQ(refusal(headerLines("Content-Length: 1048576")), 0);
    EXPECT_EQ(refusal(headerLines("Content-Length: 1048577")), 413);
    EXPECT_EQ(refusal(headerLines("Transfer-Encoding: chunked")), 411);
    EXPECT_EQ(refusal("GET /" + QByteArray(16 * 1024 - 5, 'x')), 0);
    EXPECT_EQ(refusal("GET /" + QByteArray(16 * 1024, 'x')), 431);
    EXPECT_EQ(refusal(headerLines("X: " + QByteArray(16 * 1024, 'x'))), 431);
    // A long body is not a long head.
    EXPECT_EQ(refusal(headerLines("Content-Length: 20000") + QByteArray(20'000, 'x')), 0);
}

TEST(DemoHttpTest, Responses) {
    EXPECT_EQ(
        demoResponse({.status = 405, .body = "{}", .allow = "GET, HEAD"}, true),
        "HTTP/1.1 405 \r\nContent-Type: application/json\r\nContent-Length: 2\r\n"
        "Connection: close\r\nAllow: GET, HEAD\r\n\r\n{}");
    EXPECT_EQ(
        demoResponse({.body = "<p>", .contentType = "text/html"}, false),
        "HTTP/1.1 200 \r\nContent-Type: text/html\r\nContent-Length: 3\r\n"
        "Connection: close\r\n\r\n");
    EXPECT_EQ(demoRefusal(400).status, 400);
    EXPECT_EQ(demoRefusal(400).body, R"({"error":"Not understood"})");
}
