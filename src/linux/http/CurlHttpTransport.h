#pragma once

#include "linux/http/HttpExchange.h"
#include "platform/HttpTransport.h"

#include <QPointer>

#include <memory>
#include <vector>

namespace lumora {

/// Carries requests with curl on the program's event loop, begun at the first exchange. The proxies
/// that the environment names hold, and what the system trusts; SSL_CERT_FILE and SSL_CERT_DIR add
/// certificates.
class CurlHttpTransport final : public HttpTransport {
public:
    explicit CurlHttpTransport(HttpLimits limits = {});
    ~CurlHttpTransport() override;

    QCoro::Task<HttpOutcome> exchange(HttpRequest request) override;

private:
    void remember(HttpExchange& exchange);
    CurlLoop& loop();

    HttpLimits m_limits;
    bool m_closing = false;
    std::unique_ptr<CurlLoop> m_loop;
    std::vector<QPointer<HttpExchange>> m_exchanges; ///< those under way, and some past ones
};

} // namespace lumora
