#include "service/LumoError.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

LumoError::LumoError(Kind kind, QString text, int status)
    : m_kind(kind)
    , m_text(std::move(text))
    , m_status(status) {}

LumoError LumoError::networkError(QString description) {
    return LumoError(Kind::NetworkError, std::move(description));
}

LumoError LumoError::refused(QString description) {
    LumoError error = networkError(std::move(description));
    error.m_wasSent = false;
    return error;
}

LumoError LumoError::serverError(int status) {
    return LumoError(Kind::ServerError, {}, status);
}

LumoError LumoError::actionRejected(QString message) {
    return LumoError(Kind::ActionRejected, std::move(message));
}

LumoError LumoError::notConfigured() {
    return LumoError(Kind::NotConfigured);
}

LumoError LumoError::invalidURL() {
    return LumoError(Kind::InvalidURL);
}

LumoError LumoError::unauthorized() {
    return LumoError(Kind::Unauthorized);
}

LumoError LumoError::invalidResponse() {
    return LumoError(Kind::InvalidResponse);
}

bool LumoError::isRetryable() const {
    return (m_kind == Kind::NetworkError && m_wasSent) ||
           (m_kind == Kind::ServerError && (m_status >= 500 || m_status == 429));
}

QString LumoError::errorDescription() const {
    switch (m_kind) {
    case Kind::NetworkError:
    case Kind::ActionRejected:
        return m_text;
    case Kind::ServerError:
        return u"Server error (%1)"_s.arg(m_status);
    case Kind::NotConfigured:
        return u"Endpoint URL or token not set"_s;
    case Kind::InvalidURL:
        return u"Invalid endpoint URL"_s;
    case Kind::Unauthorized:
        return u"Token rejected (401)"_s;
    case Kind::InvalidResponse:
        return u"Invalid response from server"_s;
    }
    Q_UNREACHABLE();
}

} // namespace lumora
