#include "service/ReplyClassification.h"

#include "briefing/TextBounds.h"
#include "briefing/json/JsonDocument.h"
#include "briefing/json/JsonValues.h"

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

/// As much of a message as is ever shown.
QString message(std::string_view utf8) {
    // No unit of a text takes more than three bytes, and what is torn here is cut off there.
    constexpr size_t enough = 3 * (size_t(longestPassage) + 1);
    return beginning(toQString(utf8.substr(0, enough)), longestPassage);
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
    const JsonDocument document(body);
    simdjson::dom::object members;
    if (!document.root() || document.root()->get(members) != simdjson::SUCCESS)
        return std::nullopt;
    std::optional<QString> found;
    for (const auto [key, value] : members) {
        std::string_view text;
        if (key == "error")
            found =
                value.get(text) == simdjson::SUCCESS ? std::optional(message(text)) : std::nullopt;
    }
    return found;
}

} // namespace lumora
