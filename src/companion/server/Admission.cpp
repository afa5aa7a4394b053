#include "companion/server/Admission.h"

#include <algorithm>
#include <charconv>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// "127.0.0.1" to "127.255.255.255"
bool isLoopbackNumber(QByteArrayView host) {
    const auto parts = host.toByteArray().split('.');
    return parts.size() == 4 && parts.first() == "127" &&
           std::ranges::all_of(parts, [](const QByteArray& part) {
               bool isNumber = false;
               return part.size() <= 3 && part.toUInt(&isNumber) <= 255 && isNumber &&
                      part.at(0) != '+';
           });
}

bool isPort(QByteArrayView text) {
    return text.size() <= 5 &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// Whether a Host header names this very computer.
bool namesThisComputer(QByteArrayView host) {
    const qsizetype colon =
        host.startsWith('[') ? host.indexOf(QByteArrayView("]:")) + 1 : host.indexOf(':');
    if (colon > 0) {
        if (!isPort(host.sliced(colon + 1)))
            return false;
        host = host.first(colon);
    }
    return host.compare("localhost", Qt::CaseInsensitive) == 0 || host == QByteArrayView("[::1]") ||
           isLoopbackNumber(host);
}

/// Whether a page in a browser asks. Browsers alone say where a request comes from; where it is
/// their user who has opened the address, they say so.
bool isFromPage(const HttpRequest& request, bool mayBeOpened) {
    const auto site = request.header("sec-fetch-site");
    const bool isOpened = mayBeOpened && site == QByteArray("none");
    return request.header("origin") || (site && !isOpened);
}

HttpAnswer wrongMethod(const QByteArray& allowed) {
    HttpAnswer answer = errorAnswer(405, u"This takes %1"_s.arg(QString::fromLatin1(allowed)));
    answer.allow = allowed;
    return answer;
}

} // namespace

Admission admit(const HttpRequest& request, QByteArrayView token) {
    if (!namesThisComputer(request.header("host").value_or(QByteArray())))
        return errorAnswer(403, u"This service is for this computer alone"_s);
    const QByteArray path = request.target.split('?').first();
    const bool isGreeting = path == "/";
    if (isFromPage(request, isGreeting))
        return errorAnswer(403, u"This service is not for web pages"_s);
    const bool isAction = path == "/api/briefing/action";
    if (!isAction && !isGreeting && path != "/api/briefing")
        return errorAnswer(404, u"There is nothing here"_s);
    const bool isHead = request.method == "HEAD";
    if (isAction ? request.method != "POST" : request.method != "GET" && !isHead)
        return wrongMethod(isAction ? "POST" : "GET, HEAD");
    if (isGreeting)
        return GreetingWanted{isHead};
    if (!areEqualInConstantTime(request.header("x-api-key").value_or(QByteArray()), token))
        return errorAnswer(401, u"The token is not the one asked for"_s);
    if (!isAction)
        return BriefingWanted{isHead};
    auto action = parseAction(request.body);
    if (!action)
        return errorAnswer(400, action.error());
    return *std::move(action);
}

bool areEqualInConstantTime(QByteArrayView given, QByteArrayView wanted) {
    // Every byte of the wanted one is looked at, whatever was given.
    unsigned differences = given.size() == wanted.size() ? 0U : 1U;
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        const char other = i < given.size() ? given[i] : '\0';
        differences |= unsigned(static_cast<unsigned char>(other ^ wanted[i]));
    }
    return differences == 0;
}

} // namespace lumora::companion
