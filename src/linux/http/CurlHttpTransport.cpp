#include "linux/http/CurlHttpTransport.h"

#include "linux/http/WipingAllocator.h"

namespace lumora {

CurlHttpTransport::CurlHttpTransport(HttpLimits limits)
    : m_limits(limits) {}

CurlHttpTransport::~CurlHttpTransport() {
    m_closing = true;
    const auto exchanges = std::exchange(m_exchanges, {});
    for (const auto& exchange : exchanges) {
        if (exchange)
            exchange->close();
    }
}

QCoro::Task<HttpOutcome> CurlHttpTransport::exchange(HttpRequest request) {
    HttpExchange exchange(loop(), m_limits, std::move(request));
    remember(exchange);
    if (m_closing)
        exchange.close();
    else
        exchange.start();
    HttpOutcome outcome = co_await exchange.outcome().value();
    co_return outcome;
}

void CurlHttpTransport::remember(HttpExchange& exchange) {
    std::erase_if(m_exchanges, [](const auto& known) { return known.isNull(); });
    m_exchanges.emplace_back(&exchange);
}

CurlLoop& CurlHttpTransport::loop() {
    if (!m_loop) {
        makeCurlWipeItsMemory();
        m_loop = std::make_unique<CurlLoop>();
    }
    return *m_loop;
}

} // namespace lumora
