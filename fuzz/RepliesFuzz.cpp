// Every answer to an action is a result or an error that has words for the user.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "service/LumoAction.h"
#include "service/ReplyClassification.h"
#include "texts/PlainText.h"
#include "texts/StatusPresentation.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

using ErrorKind = LumoError::Kind;

bool isSuccess(int status) {
    return status >= 200 && status <= 299;
}

ErrorKind kindFor(int status, const QByteArray& body) {
    if (status == 401)
        return ErrorKind::Unauthorized;
    const bool hasReason = status >= 400 && status <= 499 && errorMessage(body).has_value();
    return hasReason ? ErrorKind::ActionRejected : ErrorKind::ServerError;
}

void expectError(const LumoError& error, int status, const QByteArray& body) {
    expect(error.kind() == kindFor(status, body), "the error that the status stands for");
    expect(
        error.isRetryable() ==
            (error.kind() == ErrorKind::ServerError && (status >= 500 || status == 429)),
        "another try only after what may pass");
    if (error.kind() == ErrorKind::ActionRejected)
        expect(error.errorDescription() == errorMessage(body), "the service's own words");
    expect(
        !singleLine(failureText(error.errorDescription())).trimmed().isEmpty(), "words to be read");
    expectLine(singleLine(error.errorDescription()));
}

void expectResult(const ActionResult& result) {
    QJsonObject object;
    if (result.ok)
        object[u"ok"_s] = *result.ok;
    if (result.queued)
        object[u"queued"_s] = *result.queued;
    if (result.reason)
        object[u"reason"_s] = *result.reason;
    expectWhole(result.reason.value_or(QString()));
    const QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    expect(decodeActionResult(json) == result, "the same result when it is written anew");
}

} // namespace

void replies(QByteArrayView input) {
    Input values(input);
    const int status = values.number<std::int16_t>();
    const QByteArray body = values.rest();
    const auto reply = classifyOutcome(HttpResponse{status, body});
    expect(reply.has_value() == isSuccess(status), "a body of successes alone");
    if (reply) {
        expect(*reply == body, "the body as it came");
        expectResult(decodeActionResult(body));
    } else {
        expectError(reply.error(), status, body);
    }
}

} // namespace lumora::fuzz
