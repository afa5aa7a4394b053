#pragma once

#include "linux/http/HttpExchange.h"
#include "platform/HttpTransport.h"

#include <QPointer>
#include <QSslConfiguration>

#include <memory>
#include <vector>

class QNetworkAccessManager;

namespace lumora {

/// Carries requests with Qt's network stack, over one access manager that is made at the first
/// exchange. The system's proxy and trust settings hold; SSL_CERT_FILE and SSL_CERT_DIR add
/// certificates.
class QtHttpTransport final : public HttpTransport {
public:
    explicit QtHttpTransport(HttpLimits limits = {});
    ~QtHttpTransport() override;

    QCoro::Task<HttpOutcome> exchange(HttpRequest request) override;

private:
    void remember(HttpExchange& exchange);
    QNetworkAccessManager& manager();
    std::optional<QSslConfiguration> trustFor(const QUrl& url);

    HttpLimits m_limits;
    bool m_closing = false;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    std::optional<std::optional<QSslConfiguration>> m_trust; ///< absent until TLS is used
    std::vector<QPointer<HttpExchange>> m_exchanges; ///< those under way, and some past ones
};

} // namespace lumora
