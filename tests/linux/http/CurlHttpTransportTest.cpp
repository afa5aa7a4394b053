#include "linux/http/HttpFetch.h"
#include "support/Patience.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

TEST(CurlHttpTransport, HandsOverStatusAndBody) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "hello")));
    EXPECT_EQ(summary(fetch(get(server.url(u"/a?b=c"_s)))), "200 hello");
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_TRUE(server.requests().first().startsWith("GET /a?b=c HTTP/1.1\r\n"));
}

TEST(CurlHttpTransport, SendsTheGivenHeadersAndItsOwnName) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "")));
    fetch(get(server.url(u"/"_s)));
    const QByteArray request = server.requests().value(0);
    EXPECT_EQ(header(request, "X-Api-Key"), "T");
    EXPECT_EQ(header(request, "Accept"), "application/json");
    EXPECT_TRUE(header(request, "User-Agent")->startsWith("Lumora/"));
    EXPECT_EQ(header(request, "Content-Type"), std::nullopt);
    EXPECT_EQ(header(request, "Cookie"), std::nullopt);
}

TEST(CurlHttpTransport, PostsTheBody) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "")));
    fetch(post(server.url(u"/"_s), R"({"type":"capture"})"));
    const QByteArray request = server.requests().value(0);
    EXPECT_TRUE(request.startsWith("POST / HTTP/1.1\r\n"));
    EXPECT_EQ(header(request, "Content-Type"), "application/json");
    EXPECT_TRUE(request.endsWith("\r\n\r\n"
                                 R"({"type":"capture"})"));
}

TEST(CurlHttpTransport, AStatusIsAnAnswerWhateverItIs) {
    for (const int status :
         {204, 304, 400, 401, 403, 404, 405, 407, 409, 410, 418, 429, 451, 499, 500, 501, 503,
          599}) {
        const bool hasBody = status != 204 && status != 304;
        ScriptedServer server(ScriptedServer::always(
            ScriptedServer::answer(QByteArray::number(status) + " Text", hasBody ? "B" : "")));
        EXPECT_EQ(
            summary(fetch(get(server.url(u"/"_s)))),
            std::to_string(status) + (hasBody ? " B" : " "));
        EXPECT_EQ(server.requests().size(), 1) << status;
    }
}

TEST(CurlHttpTransport, AChallengeForCredentialsIsAnAnswerAtOnce) {
    for (const QByteArray challenge : {"Basic realm=\"r\"", "Digest realm=\"r\", nonce=\"n\""}) {
        ScriptedServer server(ScriptedServer::always(ScriptedServer::answer(
            "401 Unauthorized", "no", "WWW-Authenticate: " + challenge + "\r\n")));
        EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "401 no");
        EXPECT_EQ(summary(fetch(post(server.url(u"/"_s), "{}"))), "401 no");
        EXPECT_EQ(server.requests().size(), 2);
    }
}

TEST(CurlHttpTransport, KeepsNoCookies) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("200 OK", "", "Set-Cookie: a=b\r\n")));
    CurlHttpTransport transport;
    awaitValue(transport.exchange(get(server.url(u"/"_s))));
    awaitValue(transport.exchange(get(server.url(u"/"_s))));
    ASSERT_EQ(server.requests().size(), 2);
    EXPECT_EQ(header(server.requests()[1], "Cookie"), std::nullopt);
}

TEST(CurlHttpTransport, KeepsNoCache) {
    ScriptedServer server(ScriptedServer::always(
        ScriptedServer::answer("200 OK", "x", "Cache-Control: max-age=600\r\nETag: \"e\"\r\n")));
    CurlHttpTransport transport;
    awaitValue(transport.exchange(get(server.url(u"/"_s))));
    EXPECT_EQ(summary(awaitValue(transport.exchange(get(server.url(u"/"_s))))), "200 x");
    ASSERT_EQ(server.requests().size(), 2);
    EXPECT_EQ(header(server.requests()[1], "If-None-Match"), std::nullopt);
}

TEST(CurlHttpTransport, AServerThatClosesUnansweredSeesTheRequestOnce) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) { connection.close(); });
    EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "failed: Connection closed");
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(summary(fetch(post(server.url(u"/"_s), "{}"))), "failed: Connection closed");
    EXPECT_EQ(server.requests().size(), 2);
}

TEST(CurlHttpTransport, AServerThatClosesAfterAnInterimAnswerSeesTheRequestOnce) {
    ScriptedServer server(ScriptedServer::always("HTTP/1.1 100 Continue\r\n\r\n"));
    EXPECT_FALSE(fetch(get(server.url(u"/"_s))));
    EXPECT_FALSE(fetch(post(server.url(u"/"_s), "{}")));
    EXPECT_EQ(server.requests().size(), 2);
}

TEST(CurlHttpTransport, InterimAnswersArePassedOver) {
    const QByteArray hints = "HTTP/1.1 103 Early Hints\r\nLink: </a>; rel=preload\r\n\r\n";
    const QByteArray proceed = "HTTP/1.1 100 Continue\r\n\r\n";
    const QByteArray processing = "HTTP/1.1 102 Processing\r\n\r\n";
    for (const QByteArray& interim :
         {proceed, proceed + proceed, processing, hints, hints + hints + processing}) {
        ScriptedServer server(
            ScriptedServer::always(interim + ScriptedServer::answer("200 OK", "x")));
        EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "200 x") << interim.constData();
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST(CurlHttpTransport, AServerThatResetsTheConnectionSeesTheRequestOnce) {
    ScriptedServer server([](QTcpSocket& connection, const QByteArray&) { connection.abort(); });
    EXPECT_FALSE(fetch(get(server.url(u"/"_s))));
    EXPECT_FALSE(fetch(post(server.url(u"/"_s), "{}")));
    EXPECT_EQ(server.requests().size(), 2);
}

TEST(CurlHttpTransport, NoRequestIsRepeatedAfterAnAnsweredOneEither) {
    int number = 0;
    // A server that keeps its connections open, until it closes one without answering.
    ScriptedServer server([&number](QTcpSocket& connection, const QByteArray&) {
        if (++number % 2 == 1)
            connection.write(ScriptedServer::answer("200 OK", "x", "Connection: keep-alive\r\n"));
        else
            connection.close();
    });
    CurlHttpTransport transport;
    for (const auto& request : {get(server.url(u"/"_s)), post(server.url(u"/"_s), "{}")}) {
        EXPECT_EQ(summary(awaitValue(transport.exchange(request))), "200 x");
        EXPECT_EQ(summary(awaitValue(transport.exchange(request))), "failed: Connection closed");
    }
    EXPECT_EQ(server.requests().size(), 4);
}

TEST(CurlHttpTransport, AnAnswerCutShortIsAFailure) {
    for (const QByteArray bytes : {
             "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\n12345\r\n",
             "HTTP/1.1 404 Not Found\r\nContent-Length: 10\r\n\r\n12345",
             "HTTP/1.1 200 OK\r\nContent-Le",
             "HTTP/1.",
         }) {
        ScriptedServer server(ScriptedServer::always(bytes));
        EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "failed: Connection closed")
            << bytes.constData();
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST(CurlHttpTransport, SomethingOtherThanHttpIsNoAnswer) {
    for (const QByteArray bytes :
         {"SSH-2.0-OpenSSH_9.2p1\r\n", "{\"a\": 1}\n", "ICY 200 OK\r\n\r\n",
          "HTTP/1.1 abc OK\r\n\r\n", "HTTP/1.1 0 OK\r\n\r\nx"}) {
        ScriptedServer server([bytes](QTcpSocket& connection, const QByteArray&) {
            connection.write(bytes); // and waits, as such servers do
        });
        EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "no HTTP: The answer is no HTTP")
            << bytes.constData();
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST(CurlHttpTransport, NothingIsAskedToBeCompressedNorUnpacked) {
    ScriptedServer server(ScriptedServer::always(
        ScriptedServer::answer("200 OK", "no zlib at all", "Content-Encoding: gzip\r\n")));
    EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "200 no zlib at all");
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_EQ(header(server.requests()[0], "Accept-Encoding"), "identity");
}

TEST(CurlHttpTransport, ABodyInATransferCodingIsNotUnpackedEither) {
    const QByteArray packed = qCompress(R"({"a":1})").sliced(4); // the length before it is Qt's own
    ScriptedServer server(
        ScriptedServer::always("HTTP/1.1 200 OK\r\nTransfer-Encoding: deflate\r\n\r\n" + packed));
    EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "no HTTP: The answer is no HTTP");
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(CurlHttpTransport, AnAnswerMayHaveTrailers) {
    ScriptedServer server(
        ScriptedServer::always("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                               "1\r\nx\r\n0\r\nServer-Timing: db\r\n\r\n"));
    EXPECT_EQ(summary(fetch(get(server.url(u"/"_s)))), "200 x");
}

TEST(CurlHttpTransport, ARefusedConnectionIsAFailure) {
    QUrl url;
    {
        ScriptedServer server(ScriptedServer::always({}));
        url = server.url(u"/"_s);
    }
    EXPECT_EQ(summary(fetch(get(url))), "failed: Connection refused");
}

TEST(CurlHttpTransport, OnlyHttpAddressesAreAsked) {
    for (const QString& text :
         {u"file:///etc/hostname"_s, u"data:,x"_s, u"https:///x"_s, u"example.com/x"_s}) {
        EXPECT_EQ(
            summary(fetch(get(QUrl(text)))), "refused: The address is no http or https address");
    }
}

TEST(CurlHttpTransport, AHeaderStaysOnItsLine) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "")));
    HttpRequest request = get(server.url(u"/"_s));
    request.headers[0].second = "T\r\nX-Other: 1";
    EXPECT_EQ(summary(fetch(request)), "refused: The header X-Api-Key contains a line break");
    EXPECT_TRUE(server.requests().isEmpty());

    request.headers[0].second = " T\n";
    fetch(request);
    EXPECT_EQ(header(server.requests().value(0), "X-Api-Key"), "T");
}

TEST(CurlHttpTransport, ExchangesOverlap) {
    QList<QTcpSocket*> waiting;
    ScriptedServer server(
        [&waiting](QTcpSocket& connection, const QByteArray&) { waiting += &connection; });
    CurlHttpTransport transport;
    auto first = transport.exchange(get(server.url(u"/first"_s)));
    ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 1; }, patience));
    auto second = transport.exchange(get(server.url(u"/second"_s)));
    ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 2; }, patience));
    waiting[1]->write(ScriptedServer::answer("200 OK", "2"));
    EXPECT_EQ(summary(awaitValue(std::move(second))), "200 2");
    EXPECT_FALSE(first.isReady());
    waiting[0]->write(ScriptedServer::answer("200 OK", "1"));
    EXPECT_EQ(summary(awaitValue(std::move(first))), "200 1");
}

TEST(CurlHttpTransport, DestructionEndsWhatIsUnderWay) {
    ScriptedServer server([](QTcpSocket&, const QByteArray&) {});
    std::optional<QCoro::Task<HttpOutcome>> first;
    std::optional<QCoro::Task<HttpOutcome>> second;
    {
        CurlHttpTransport transport;
        first = transport.exchange(get(server.url(u"/"_s)));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !server.requests().isEmpty(); }, patience));
        second = transport.exchange(get(server.url(u"/"_s))); // not even begun
    }
    ASSERT_TRUE(first->isReady());
    ASSERT_TRUE(second->isReady());
    EXPECT_EQ(summary(awaitValue(*std::move(first))), "failed: The connection was shut down");
}

namespace {

QCoro::Task<>
destroyWhenAnswered(std::unique_ptr<CurlHttpTransport>* transport, HttpRequest request) {
    auto exchange = (*transport)->exchange(std::move(request));
    const HttpOutcome outcome = co_await exchange;
    transport->reset();
}

} // namespace

TEST(CurlHttpTransport, WhoWaitsForAnAnswerMayDestroyTheTransport) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "x")));
    auto transport = std::make_unique<CurlHttpTransport>();
    const auto task = destroyWhenAnswered(&transport, get(server.url(u"/"_s)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return transport == nullptr; }, patience));
    EXPECT_TRUE(task.isReady());
}
