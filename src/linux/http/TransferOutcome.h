#pragma once

#include "platform/HttpTransport.h"

#include <curl/curl.h>

namespace lumora {

/// How a transfer ended, as curl tells it.
struct TransferEnd {
    CURLcode result = CURLE_OK;
    int status = 0;            ///< of the answer; 0: there was none
    bool headComplete = false; ///< whether the answer's head came whole
    int proxyStatus = 0;       ///< of a proxy's answer to CONNECT; 0: there was none
    int systemError = 0;       ///< errno of a connection that failed; 0: not known
    bool tooLarge = false;     ///< broken off because more came than is taken
    bool packed = false;       ///< broken off because the body comes in a coding nobody asked for
    QString host;              ///< that was asked for
    QString detail;            ///< curl's own words; may be empty
};

/// What a transfer that ended as `end`, with `body`, amounts to. An answer with an HTTP status is
/// an answer, whatever the status; but one that broke off half-way is a failure.
[[nodiscard]] HttpOutcome outcomeOf(const TransferEnd& end, const QByteArray& body);

/// The outcome of an exchange that ran out of time.
[[nodiscard]] HttpOutcome timedOut();

/// The outcome of an exchange that failed, described as `description`.
[[nodiscard]] HttpOutcome failed(const QString& description);

/// The outcome of a request that cannot be sent, described as `description`.
[[nodiscard]] HttpOutcome refused(const QString& description);

/// The outcome of an exchange that brought more than is taken.
[[nodiscard]] HttpOutcome tooLarge();

} // namespace lumora
