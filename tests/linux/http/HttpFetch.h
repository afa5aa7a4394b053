#pragma once

#include "linux/http/CurlHttpTransport.h"
#include "support/Await.h"
#include "support/ScriptedServer.h"

#include <string>

namespace lumora::tests {

/// A GET of `url` as the client sends it.
inline HttpRequest get(const QUrl& url) {
    return {"GET", url, {{"X-Api-Key", "T"}, {"Accept", "application/json"}}, {}};
}

/// A POST of `body` to `url` as the client sends it.
inline HttpRequest post(const QUrl& url, const QByteArray& body) {
    return {"POST", url, {{"X-Api-Key", "T"}, {"Content-Type", "application/json"}}, body};
}

/// The outcome of one exchange over a transport of its own.
inline HttpOutcome fetch(HttpRequest request, HttpLimits limits = {}) {
    CurlHttpTransport transport(limits);
    return awaitValue(transport.exchange(std::move(request)));
}

/// What the outcome was, on one line.
inline std::string summary(const HttpOutcome& outcome) {
    if (outcome)
        return std::to_string(outcome->status) + " " + outcome->body.left(40).toStdString();
    const std::string kinds[] = {"failed: ", "refused: ", "too large: ", "no HTTP: "};
    return kinds[static_cast<int>(outcome.error().kind)] +
           outcome.error().description.toStdString();
}

} // namespace lumora::tests
