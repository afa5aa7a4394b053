#include "companion/server/HttpRequest.h"

#include <gtest/gtest.h>

using namespace lumora::companion;

namespace {

/// The status with which it is refused; 0: it is taken, -1: there is more to come.
int refusalOf(const QByteArray& bytes) {
    const RequestReading reading = readRequest(bytes);
    if (std::holds_alternative<RequestUnfinished>(reading))
        return -1;
    const auto* refused = std::get_if<RequestRefused>(&reading);
    return refused ? refused->status : 0;
}

QByteArray withHeaders(const QByteArray& lines) {
    return "GET / HTTP/1.1\r\nHost: localhost\r\n" + lines + "\r\n";
}

} // namespace

TEST(HttpRequest, IsReadAsItCame) {
    const HttpRequest request{
        "POST",
        "/api/briefing/action?x",
        {{"host", "localhost:8764"}, {"x-api-key", "a b\tc"}, {"content-length", "5"}},
        "{\"a\"}"};
    EXPECT_EQ(
        readRequest("POST /api/briefing/action?x HTTP/1.1\r\nHost: localhost:8764\r\n"
                    "X-API-Key:  a b\tc \r\nContent-Length: 5\r\n\r\n{\"a\"}more"),
        RequestReading(request));
    EXPECT_EQ(request.header("x-api-key"), "a b\tc");
    EXPECT_EQ(request.header("origin"), std::nullopt);
}

TEST(HttpRequest, IsUnfinishedUntilAllOfItIsThere) {
    const QByteArray whole = "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 3\r\n\r\nabc";
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_EQ(refusalOf(whole.first(size)), -1) << size;
    EXPECT_EQ(refusalOf(whole), 0);
}

TEST(HttpRequest, IsRefusedWhereProgramsMightDiffer) {
    for (const QByteArray head :
         {"\r\n\r\n", "GET\r\n\r\n", "GET /\r\n\r\n", "GET / HTTP/2.0\r\nHost: a\r\n\r\n",
          "GET  / HTTP/1.1\r\nHost: a\r\n\r\n", "G\tT / HTTP/1.1\r\nHost: a\r\n\r\n",
          "GET /\x01 HTTP/1.1\r\nHost: a\r\n\r\n", "GET / HTTP/1.1\r\n\r\n",
          "GET / HTTP/1.1\nHost: a\r\n\r\n"})
        EXPECT_EQ(refusalOf(head), 400) << head.constData();
    for (const QByteArray lines :
         {" folded: line\r\n", "no colon\r\n", "Name : value\r\n", ": value\r\n",
          "Host: localhost\r\n", "Content-Length: 0\r\nContent-Length: 0\r\n",
          "Content-Length: -1\r\n", "Content-Length: 0x1\r\n", "Content-Length: \r\n",
          "Content-Length: 1, 1\r\n", "A: b\rc\r\n", "A: b\x7f\r\n", "A: b\nc\r\n"})
        EXPECT_EQ(refusalOf(withHeaders(lines)), 400) << lines.constData();
    EXPECT_EQ(refusalOf(withHeaders("Transfer-Encoding: chunked\r\n")), 501);
    EXPECT_EQ(refusalOf(withHeaders("Accept: */*\r\n")), 0);
}

TEST(HttpRequest, IsBounded) {
    const QByteArray head = "GET / HTTP/1.1\r\nHost: localhost\r\nA: ";
    const auto withFilling = [&](qsizetype size) {
        return head + QByteArray(size - head.size(), 'x');
    };
    EXPECT_EQ(refusalOf(withFilling(largestHead)), -1);
    EXPECT_EQ(refusalOf(withFilling(largestHead + 1)), 431);
    EXPECT_EQ(refusalOf(withFilling(largestHead) + "\r\n\r\n"), 0);
    EXPECT_EQ(refusalOf(withFilling(largestHead + 1) + "\r\n\r\n"), 431);
    const auto withLength = [&](const QByteArray& length) {
        return withHeaders("Content-Length: " + length + "\r\n");
    };
    EXPECT_EQ(refusalOf(withLength(QByteArray::number(largestBody))), -1);
    EXPECT_EQ(refusalOf(withLength(QByteArray::number(largestBody + 1))), 413);
    EXPECT_EQ(refusalOf(withLength("99999999999999999999999")), 413);
}
