// Whatever is sent to the service, it never waits for more than it takes, answers what is whole as
// proper HTTP, and lets nobody in without the token and a name of this computer.

#include "Expectations.h"
#include "Targets.h"
#include "companion/server/Admission.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

using companion::Admission;
using companion::GreetingWanted;
using companion::HttpAnswer;
using companion::HttpRequest;
using companion::RequestReading;
using companion::RequestRefused;
using companion::RequestUnfinished;

constexpr auto token = "0123456789abcdef";

void expectAnswer(const HttpAnswer& answer) {
    expect(answer.status >= 400 && answer.status <= 599, "a refusal");
    const QByteArray bytes = answerBytes(answer);
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    expect(headEnd > 0, "the end of the head");
    expect(bytes.mid(headEnd + 4) == answer.body, "the body behind it");
    const QJsonObject body = QJsonDocument::fromJson(answer.body).object();
    expect(!body[u"error"_s].toString().isEmpty(), "words for the user");
}

void expectVisitor(const HttpRequest& request) {
    expect(!request.header("origin"), "no web page");
    const QByteArray host = request.header("host").value_or(QByteArray()).toLower();
    expect(
        host.startsWith("localhost") || host.startsWith("127.") || host.startsWith("[::1]"),
        "a name of this computer");
}

void expectOwner(const HttpRequest& request) {
    expect(request.header("x-api-key") == token, "the token");
    expect(!request.header("sec-fetch-site"), "no browser");
    expectVisitor(request);
}

/// Where the request ends in `input`.
qsizetype sizeOf(const HttpRequest& request, QByteArrayView input) {
    return input.indexOf(QByteArrayView("\r\n\r\n")) + 4 + request.body.size();
}

} // namespace

void requests(QByteArrayView input) {
    if (const auto action = companion::parseAction(input); !action)
        expectWhole(action.error());
    const RequestReading reading = companion::readRequest(input);
    if (std::holds_alternative<RequestUnfinished>(reading)) {
        expect(
            input.size() < companion::largestHead + 4 + companion::largestBody,
            "no endless request");
        return;
    }
    if (const auto* refused = std::get_if<RequestRefused>(&reading)) {
        expect(refused->status >= 400 && refused->status <= 599, "a refusal");
        return;
    }
    const auto& request = std::get<HttpRequest>(reading);
    const qsizetype size = sizeOf(request, input);
    expect(companion::readRequest(input.first(size)) == reading, "the same without what follows");
    expect(
        companion::readRequest(input.first(size - 1)) == RequestReading(RequestUnfinished{}),
        "not whole without its last byte");
    const Admission admission = companion::admit(request, token);
    if (const auto* answer = std::get_if<HttpAnswer>(&admission))
        expectAnswer(*answer);
    else if (std::holds_alternative<GreetingWanted>(admission))
        expectVisitor(request);
    else
        expectOwner(request);
}

} // namespace lumora::fuzz
