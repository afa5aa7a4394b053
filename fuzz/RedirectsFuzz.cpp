// A redirect that is followed stays at its origin with the token; a header's value stays on its
// line; an answer's head stays within its limit.
//
// The input is the choice of a request, an answer's status, the redirects so far, and the value of
// Location.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "linux/http/HeaderValue.h"
#include "linux/http/ReceivedAnswer.h"
#include "linux/http/RedirectRule.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

HttpRequest someRequest(Input& input) {
    static const std::array addresses{
        u"https://lumora.example.com/briefing"_s, u"https://lumora.example.com:8443/a/b?c=d"_s,
        u"http://127.0.0.1:8080/briefing"_s, u"http://[::1]/"_s};
    HttpRequest request;
    request.url = QUrl(addresses[size_t(input.below(int(addresses.size())))]);
    request.method = input.flag() ? "POST" : "GET";
    request.headers.emplaceBack("Authorization", "Bearer token");
    if (request.method == "POST") {
        request.headers.emplaceBack("Content-Type", "application/json");
        request.body = "{}";
    }
    return request;
}

int portOrDefault(const QUrl& url) {
    return url.port(url.scheme() == u"https" ? 443 : 80);
}

void expectNext(const HttpRequest& sent, const HttpRequest& next, int status) {
    expect(status >= 301 && status <= 308 && (status < 304 || status > 306), "a redirect");
    expect(
        next.url.scheme() == sent.url.scheme() && next.url.host() == sent.url.host() &&
            portOrDefault(next.url) == portOrDefault(sent.url),
        "the same origin");
    expect(next.url.isValid(), "an address");
    expectGraphic(next.url.toEncoded());
    expect(next.headers.first() == sent.headers.first(), "the token");
    const bool isPost = next.method == "POST";
    expect(isPost == (sent.method == "POST" && status >= 307), "the method that the status means");
    expect(isPost == next.body.has_value(), "a body of posts alone");
    expect(isPost == (next.headers.size() == 2), "a type where there is a body");
}

void expectHeader(const QByteArray& bytes) {
    const auto value = headerValue(bytes);
    if (!value)
        return;
    expect(
        !value->contains('\r') && !value->contains('\n') && !value->contains('\0'),
        "a single line");
    expect(value->trimmed() == *value, "no blanks around it");
    expect(bytes.contains(*value), "the value that it was");
}

void expectHead(const QByteArray& bytes) {
    constexpr qint64 limit = 256;
    ReceivedAnswer head(limit, limit);
    qint64 taken = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        if (!head.takeHeadLine(line))
            break;
        taken += line.size();
    }
    expect(taken <= limit, "a head within its limit");
    ReceivedAnswer answer(limit, limit);
    const bool isBounded = bytes.size() <= limit;
    expect(answer.takeBody(bytes) == isBounded, "a body within its limit");
    expect(answer.body() == (isBounded ? bytes : QByteArray()), "the body as it came");
}

} // namespace

void redirects(QByteArrayView input) {
    Input values(input);
    const HttpRequest sent = someRequest(values);
    const int status = 296 + values.below(16);
    const int hops = values.below(2 * maximumRedirects);
    const QByteArray location = values.rest();
    if (const auto next = followRedirect(sent, status, location, hops)) {
        expect(hops < maximumRedirects, "an end of redirects");
        expectNext(sent, *next, status);
    }
    expectHeader(location);
    expectHead(location);
}

} // namespace lumora::fuzz
