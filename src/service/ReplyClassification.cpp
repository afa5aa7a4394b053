#include "service/ReplyClassification.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

LumoError failureError(const TransportError& failure) {
    switch (failure.kind) {
    case TransportError::Kind::Failed:
        return LumoError::networkError(failure.description);
    case TransportError::Kind::Refused:
        return LumoError::refused(failure.description);
    case TransportError::Kind::BodyTooLarge:
    case TransportError::Kind::NotHttp:
        return LumoError::invalidResponse();
    }
    Q_UNREACHABLE();
}

LumoError statusError(const HttpResponse& response) {
    if (response.status == 401)
        return LumoError::unauthorized();
    if (response.status >= 400 && response.status <= 499) {
        if (auto message = errorMessage(response.body))
            return LumoError::actionRejected(*std::move(message));
    }
    return LumoError::serverError(response.status);
}

} // namespace

tl::expected<QByteArray, LumoError> classifyOutcome(const HttpOutcome& outcome) {
    if (!outcome)
        return tl::unexpected(failureError(outcome.error()));
    if (outcome->status >= 200 && outcome->status <= 299)
        return outcome->body;
    return tl::unexpected(statusError(*outcome));
}

std::optional<QString> errorMessage(const QByteArray& body) {
    // A body that is no JSON, or no object, reads as an object without members.
    const QJsonValue error = QJsonDocument::fromJson(body).object().value(u"error"_s);
    if (!error.isString())
        return std::nullopt;
    return error.toString();
}

} // namespace lumora
