#include "companion/fetching/CurlWeb.h"

#include "support/Patience.h"
#include "support/ScopedEnvironment.h"
#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QSslServer>
#include <QTest>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

using lumora::tests::header;
using lumora::tests::patience;
using lumora::tests::ScopedEnvironment;
using lumora::tests::ScriptedServer;
using lumora::tests::TestCertificates;

/// What came of a request, on one line.
std::string ask(CurlWeb& web, WebRequest request) {
    std::optional<WebOutcome> outcome;
    web.send(std::move(request), [&outcome](const WebOutcome& got) { outcome = got; });
    EXPECT_FALSE(outcome) << "answered from within the call";
    if (!QTest::qWaitFor([&outcome] { return outcome.has_value(); }, patience))
        throw std::runtime_error("no answer");
    if (!*outcome)
        return outcome->error().toStdString();
    return std::to_string((*outcome)->status) + ' ' + (*outcome)->body.toStdString();
}

WebRequest get(const QUrl& url) {
    WebRequest request;
    request.url = url;
    return request;
}

std::string askOnce(const QUrl& url) {
    CurlWeb web;
    return ask(web, get(url));
}

std::unique_ptr<QTcpServer> encrypted(const TestCertificates& certificates) {
    auto listener = std::make_unique<QSslServer>();
    listener->setSslConfiguration(certificates.serverConfiguration());
    return listener;
}

} // namespace

TEST(FetchableUrl, IsHttpsOrOfThisComputer) {
    const auto of = [](const QString& url) {
        const auto fetched = fetchableUrl(QUrl(url));
        return fetched ? fetched->toString().toStdString() : std::string();
    };
    EXPECT_EQ(of(u"https://example.org/a.ics?x=1"_s), "https://example.org/a.ics?x=1");
    EXPECT_EQ(of(u"webcal://example.org/a.ics"_s), "https://example.org/a.ics");
    EXPECT_EQ(of(u"http://127.0.0.1:8000/a"_s), "http://127.0.0.1:8000/a");
    EXPECT_EQ(of(u"http://localhost/a"_s), "http://localhost/a");
    EXPECT_EQ(of(u"http://[::1]/a"_s), "http://[::1]/a");
    for (const QString& url :
         {u"http://example.org/a"_s, u"http://localhost.example.org/"_s, u"file:///etc/passwd"_s,
          u"ftp://example.org/"_s, u"https:///a"_s, u"example.org"_s, u""_s}) {
        EXPECT_EQ(of(url), "") << qPrintable(url);
    }
}

TEST(CurlWeb, HandsOverStatusBodyAndValidators) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer(
        "200 OK", "hello", "ETag: \"a\"\r\nLast-Modified: Tue, 04 Mar 2025 08:00:00 GMT\r\n")));
    CurlWeb web;
    WebRequest request = get(server.url(u"/a?b=c"_s));
    request.headers = {{"If-None-Match", "\"b\""}};
    std::optional<WebOutcome> outcome;
    web.send(request, [&outcome](const WebOutcome& got) { outcome = got; });
    ASSERT_TRUE(QTest::qWaitFor([&outcome] { return outcome.has_value(); }, patience));
    ASSERT_TRUE(outcome->has_value());
    EXPECT_EQ((*outcome)->status, 200);
    EXPECT_EQ((*outcome)->body, "hello");
    EXPECT_EQ((*outcome)->etag, "\"a\"");
    EXPECT_EQ((*outcome)->lastModified, "Tue, 04 Mar 2025 08:00:00 GMT");
    const QByteArray sent = server.requests().value(0);
    EXPECT_TRUE(sent.startsWith("GET /a?b=c HTTP/1.1\r\n"));
    EXPECT_EQ(header(sent, "If-None-Match"), "\"b\"");
    EXPECT_TRUE(header(sent, "User-Agent")->startsWith("lumora-service/"));
    EXPECT_EQ(header(sent, "Cookie"), std::nullopt);
}

TEST(CurlWeb, PostsABody) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "")));
    CurlWeb web;
    WebRequest request = get(server.url(u"/"_s));
    request.headers = {{"Content-Type", "application/json"}};
    request.body = R"({"a":1})";
    EXPECT_EQ(ask(web, request), "200 ");
    const QByteArray sent = server.requests().value(0);
    EXPECT_TRUE(sent.startsWith("POST / HTTP/1.1\r\n"));
    EXPECT_EQ(header(sent, "Content-Type"), "application/json");
    EXPECT_TRUE(sent.endsWith("\r\n\r\n{\"a\":1}"));
}

TEST(CurlWeb, AnyStatusIsAnAnswer) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("404 Not Found", "nothing")));
    EXPECT_EQ(askOnce(server.url(u"/"_s)), "404 nothing");
}

TEST(CurlWeb, RefusesWhatIsNotEncrypted) {
    EXPECT_EQ(askOnce(QUrl(u"http://192.0.2.1/secret"_s)), "Only https addresses are fetched");
    EXPECT_EQ(askOnce(QUrl(u"file:///etc/hostname"_s)), "Only https addresses are fetched");
}

TEST(CurlWeb, RefusesHeadersOfSeveralLines) {
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer("200 OK", "")));
    CurlWeb web;
    WebRequest request = get(server.url(u"/"_s));
    request.headers = {{"If-None-Match", "a\r\nX-Evil: b"}};
    EXPECT_EQ(ask(web, request), "A header contains a line break");
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST(CurlWeb, TakesBodiesUpToABound) {
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("200 OK", QByteArray(1'000, 'x'))));
    CurlWeb web;
    WebRequest request = get(server.url(u"/"_s));
    request.largest = 1'000;
    EXPECT_EQ(ask(web, request), "200 " + std::string(1'000, 'x'));
    request.largest = 999;
    EXPECT_EQ(ask(web, request), "The answer is too large");
}

TEST(CurlWeb, DoesNotWaitForEver) {
    ScriptedServer server([](QTcpSocket&, const QByteArray&) {});
    CurlWeb web;
    WebRequest request = get(server.url(u"/secret"_s));
    request.longest = std::chrono::milliseconds(50);
    EXPECT_EQ(ask(web, request), "The server did not answer in time");
}

TEST(CurlWeb, EndsWithWhatIsUnderWay) {
    ScriptedServer server([](QTcpSocket&, const QByteArray&) {});
    bool isAnswered = false;
    {
        CurlWeb web;
        web.send(get(server.url(u"/"_s)), [&isAnswered](const WebOutcome&) { isAnswered = true; });
        ASSERT_TRUE(QTest::qWaitFor([&server] { return !server.requests().isEmpty(); }, patience));
    }
    lumora::tests::drainEvents();
    EXPECT_FALSE(isAnswered);
}

TEST(CurlWeb, SaysWhatIsWrongWithoutTheAddress) {
    const auto server = std::make_unique<ScriptedServer>(
        [](QTcpSocket& connection, const QByteArray&) { connection.abort(); });
    const std::string closed = askOnce(server->url(u"/secret-1"_s));
    EXPECT_TRUE(closed.starts_with("The connection failed: ")) << closed;
    EXPECT_EQ(closed.find("secret"), std::string::npos);
    EXPECT_EQ(askOnce(QUrl(u"http://127.0.0.1:1/secret-1"_s)), "The server could not be reached");
    EXPECT_EQ(askOnce(QUrl(u"https://secret.invalid/"_s)), "The server was not found");
}

TEST(CurlWeb, DoesNotFollowIntoTheOpen) {
    ScriptedServer elsewhere(ScriptedServer::always(ScriptedServer::answer("200 OK", "open")));
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer(
        "302 Found", "", "Location: " + elsewhere.url(u"/"_s).toEncoded() + "\r\n")));
    EXPECT_EQ(askOnce(server.url(u"/"_s)), "The server sends on to where nobody may go");
    EXPECT_TRUE(elsewhere.requests().isEmpty());
}

TEST(CurlWeb, FollowsOverTlsAndTrustsWhatTheEnvironmentNames) {
    const TestCertificates certificates;
    ScriptedServer server(
        [](QTcpSocket& connection, const QByteArray& request) {
            connection.write(
                request.startsWith("GET /old ")
                    ? ScriptedServer::answer("301 Moved", "", "Location: /new\r\n")
                    : ScriptedServer::answer("200 OK", "new"));
            connection.disconnectFromHost();
        },
        encrypted(certificates));
    const QUrl url = server.url(u"/old"_s, u"https"_s);
    EXPECT_EQ(askOnce(url), "The server could not prove who it is");
    const ScopedEnvironment trusted("SSL_CERT_FILE", certificates.authorityFile().toUtf8());
    EXPECT_EQ(askOnce(url), "200 new");
}

} // namespace lumora::companion::tests
