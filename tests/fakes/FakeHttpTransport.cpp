#include "fakes/FakeHttpTransport.h"

#include <algorithm>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

FakeHttpTransport::~FakeHttpTransport() {
    m_closing = true;
    const auto exchanges = std::exchange(m_exchanges, {});
    for (const auto& exchange : exchanges)
        exchange->complete(failure(u"The transport was closed"_s));
}

QCoro::Task<HttpOutcome> FakeHttpTransport::exchange(HttpRequest request) {
    m_requests.push_back(std::move(request));
    const auto completion = std::make_shared<Completion<HttpOutcome>>();
    m_exchanges.push_back(completion);
    if (m_closing) {
        completion->complete(failure(u"The transport was closed"_s));
    } else if (!m_prepared.empty()) {
        completion->complete(std::move(m_prepared.front()));
        m_prepared.pop_front();
    }
    co_return co_await completion->value();
}

HttpOutcome FakeHttpTransport::answer(int status, const QByteArray& body) {
    return HttpResponse{status, body};
}

HttpOutcome FakeHttpTransport::failure(const QString& description) {
    return tl::unexpected(TransportError{TransportError::Kind::Failed, description});
}

void FakeHttpTransport::complete(std::size_t index, HttpOutcome outcome) {
    const auto exchange = m_exchanges.at(index);
    if (exchange->isComplete())
        throw std::logic_error("the exchange has ended already");
    exchange->complete(std::move(outcome));
}

std::size_t FakeHttpTransport::pendingCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        m_exchanges, [](const auto& exchange) { return !exchange->isComplete(); }));
}

} // namespace lumora::tests
