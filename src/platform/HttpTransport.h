#pragma once

#include "platform/Wiped.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

#include <tl/expected.hpp>

#include <optional>

namespace lumora {

/// The lines of a request's head, each a name and its value. The values, one of which is the
/// token, are wiped from memory with the last list that holds them.
struct HttpHeaders : QList<QPair<QByteArray, QByteArray>> {
    using QList::QList;
    HttpHeaders(const HttpHeaders&) = default;
    HttpHeaders(HttpHeaders&&) = default;

    /// What was here goes with the other one, and is wiped with it.
    HttpHeaders& operator=(HttpHeaders other) {
        swap(other);
        return *this;
    }

    ~HttpHeaders() {
        if (!isDetached())
            return;
        for (auto& [name, value] : *this)
            wipe(value);
    }
};

/// One HTTP request, as it goes out.
struct HttpRequest {
    QByteArray method; ///< "GET" or "POST"
    QUrl url;
    HttpHeaders headers;
    std::optional<QByteArray> body; ///< absent: no body and no Content-Type
};

/// The answer, after redirects within the same origin were followed.
struct HttpResponse {
    int status = 0;
    QByteArray body;
};

/// Why there was no answer.
struct TransportError {
    enum class Kind {
        Failed,       ///< the exchange broke off, or nobody was reached
        Refused,      ///< the request cannot be sent as it stands, whoever is reached
        BodyTooLarge, ///< the body went past what is taken
        NotHttp,      ///< something answered, but not in HTTP
    };

    Kind kind = Kind::Failed;
    QString description; ///< for the user, as it stands
};

using HttpOutcome = tl::expected<HttpResponse, TransportError>;

/// Carries requests. No cookies, no cache, no stored credentials; each exchange is one request on
/// the wire per redirect hop, never a silent repetition.
class HttpTransport {
public:
    virtual ~HttpTransport() = default;

    /// Sends `request` and completes with the answer. Exchanges may overlap. An exchange that is
    /// under way when the transport is destroyed completes with an error.
    virtual QCoro::Task<HttpOutcome> exchange(HttpRequest request) = 0;
};

} // namespace lumora
