#include "doctor/Links.h"
#include "texts/HtmlPage.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

bool hasToken(const Evidence& evidence) {
    return evidence.token && evidence.token->status == SecretLookup::Status::Found &&
           !evidence.token->isEmpty;
}

} // namespace

Finding answerLink(const Evidence& evidence) {
    using Stage = ServiceProbe::Stage;
    const QString link = u"answer"_s;
    const auto way = wayTo(evidence);
    if (!way || way < Stage::Answer)
        return Finding::notTried(link);
    const ServiceProbe& service = *evidence.service;
    if (way == Stage::Answer)
        return Finding::failed(
            link, service.timedOut ? u"It does not come in time"_s : service.trouble,
            u"Look into the service's log"_s);
    if (!hasToken(evidence))
        return Finding::notTried(link); // what comes without a token says nothing

    const QString status = u"Status %1"_s.arg(service.status);
    const QString logIn = u"Exempt the briefing's address from the log-in: the token is enough"_s;
    if (service.redirect.isValid())
        return Finding::failed(
            link, status + u", which leads to "_s + forPeople(service.redirect), logIn);
    if (service.status == 401 || service.status == 403)
        return Finding::failed(
            link, u"The token is rejected (%1)"_s.arg(service.status),
            u"Save the token that the service shows now in Lumora's settings"_s);
    if (service.status / 100 != 2)
        return Finding::failed(
            link, status, u"Look into the service's log, and whether the path is right"_s);
    if (isHtmlPage(service.body))
        return Finding::failed(link, status + u", an HTML page such as for logging in"_s, logIn);
    if (!service.contentType.contains("json"))
        return Finding::warning(
            link, status + u", of the type \"%1\""_s.arg(QString::fromLatin1(service.contentType)),
            u"Let the service say \"Content-Type: application/json\""_s);
    return Finding::ok(link, status);
}

} // namespace lumora
