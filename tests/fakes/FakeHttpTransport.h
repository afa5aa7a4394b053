#pragma once

#include "platform/Completion.h"
#include "platform/HttpTransport.h"

#include <deque>
#include <memory>
#include <vector>

namespace lumora::tests {

/// A transport that sends nothing. An exchange ends with the next prepared outcome, or else stays
/// under way until the test completes it, in any order.
class FakeHttpTransport final : public HttpTransport {
public:
    ~FakeHttpTransport() override;

    QCoro::Task<HttpOutcome> exchange(HttpRequest request) override;

    /// An answer with `status` and `body`.
    static HttpOutcome answer(int status, const QByteArray& body = {});

    /// A broken exchange with `description`.
    static HttpOutcome failure(const QString& description);

    /// Prepares the outcome of an exchange to come; each is used once, in order.
    void prepare(HttpOutcome outcome) { m_prepared.push_back(std::move(outcome)); }

    /// Ends the exchange of `requests()[index]`, which must be under way.
    void complete(std::size_t index, HttpOutcome outcome);

    /// Every request so far, in order.
    const std::vector<HttpRequest>& requests() const { return m_requests; }

    /// Whether the exchange of `requests()[index]` has not ended yet.
    bool isUnderWay(std::size_t index) const { return !m_exchanges.at(index)->isComplete(); }

    /// How many exchanges are under way.
    std::size_t pendingCount() const;

private:
    std::vector<HttpRequest> m_requests;
    std::vector<std::shared_ptr<Completion<HttpOutcome>>> m_exchanges; ///< one per request
    std::deque<HttpOutcome> m_prepared;
    bool m_closing = false;
};

} // namespace lumora::tests
