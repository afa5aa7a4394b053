#include "linux/http/QtHttpTransport.h"

#include "linux/http/OriginProxyFactory.h"
#include "linux/http/TrustStore.h"

#include <QNetworkAccessManager>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

QtHttpTransport::QtHttpTransport(HttpLimits limits)
    : m_limits(limits) {}

QtHttpTransport::~QtHttpTransport() {
    m_closing = true;
    const auto exchanges = std::exchange(m_exchanges, {});
    for (const auto& exchange : exchanges) {
        if (exchange)
            exchange->close();
    }
}

QCoro::Task<HttpOutcome> QtHttpTransport::exchange(HttpRequest request) {
    const auto trust = trustFor(request.url);
    HttpExchange exchange(manager(), m_limits, trust, std::move(request));
    remember(exchange);
    if (m_closing)
        exchange.close();
    else
        exchange.start();
    HttpOutcome outcome = co_await exchange.outcome().value();
    co_return outcome;
}

void QtHttpTransport::remember(HttpExchange& exchange) {
    std::erase_if(m_exchanges, [](const auto& known) { return known.isNull(); });
    m_exchanges.emplace_back(&exchange);
}

QNetworkAccessManager& QtHttpTransport::manager() {
    if (!m_manager) {
        m_manager = std::make_unique<QNetworkAccessManager>();
        m_manager->setProxyFactory(new OriginProxyFactory); // the manager's from here on
    }
    return *m_manager;
}

std::optional<QSslConfiguration> QtHttpTransport::trustFor(const QUrl& url) {
    if (url.scheme() != u"https"_s)
        return std::nullopt;
    if (!m_trust)
        m_trust = environmentTrust();
    return *m_trust;
}

} // namespace lumora
