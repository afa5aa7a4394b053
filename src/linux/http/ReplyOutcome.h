#pragma once

#include "platform/HttpTransport.h"

class QNetworkReply;

namespace lumora {

/// What a finished `reply` whose body was `body` amounts to. An answer with an HTTP status is an
/// answer, whatever the status; but one that broke off half-way is a failure.
[[nodiscard]] HttpOutcome outcomeOf(const QNetworkReply& reply, const QByteArray& body);

/// The outcome of an exchange that ran out of time.
[[nodiscard]] HttpOutcome timedOut();

/// The outcome of an exchange that failed, described as `description`.
[[nodiscard]] HttpOutcome failed(const QString& description);

/// The outcome of a request that cannot be sent, described as `description`.
[[nodiscard]] HttpOutcome refused(const QString& description);

} // namespace lumora
