#pragma once

#include "companion/fetching/Web.h"

#include <QObject>
#include <QThreadPool>

#include <atomic>

namespace lumora::companion {

/// Asks servers with libcurl, each request in a thread of its own, over a connection of its own.
/// Redirects are followed to https addresses only; nothing is kept from one request to the next.
/// Trusts the certificates of the system, and beside them those that SSL_CERT_FILE names.
class CurlWeb final : public QObject, public Web {
public:
    CurlWeb();

    /// Breaks off what is under way, which takes up to a second.
    ~CurlWeb() override;

    void send(WebRequest request, std::function<void(WebOutcome)> done) override;

private:
    QThreadPool m_threads;
    std::atomic<bool> m_isEnding = false;
};

} // namespace lumora::companion
