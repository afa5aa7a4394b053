#pragma once

#include "linux/http/CurlLoop.h"
#include "linux/http/HttpLimits.h"
#include "linux/http/ReceivedAnswer.h"
#include "platform/HttpTransport.h"

#include <QTimer>

#include <array>
#include <functional>

namespace lumora {

/// Has `transfer` reach `url` as the program reaches everything: through which proxy, over which
/// TLS, trusting whom, over a connection of its own.
void setWay(CURL* transfer, const QUrl& url);

/// Whether what goes to `url` passes no proxy, whatever the environment says.
[[nodiscard]] bool goesDirect(const QUrl& url);

/// One request on the wire, over a connection of its own, and the answer: no redirects, no
/// repetition, nothing kept for the next.
class HttpHop final : private CurlLoop::Listener {
public:
    /// What came of it, and the Location header of an answer (empty: none).
    using Ended = std::function<void(HttpOutcome outcome, QByteArray location)>;

    /// `loop` must outlive the hop. `ended` is called once from the event loop, and may destroy
    /// the hop; not if that is destroyed before.
    HttpHop(CurlLoop& loop, const HttpLimits& limits, HttpRequest request, Ended ended);
    ~HttpHop() override;

    HttpHop(const HttpHop&) = delete;
    HttpHop& operator=(const HttpHop&) = delete;

    /// Sends the request. To be called once. The error is for the user: the request cannot be
    /// sent, and `ended` will not be called.
    [[nodiscard]] tl::expected<void, QString> start();

private:
    void transferMoved(curl_socket_t socket) override;
    void transferEnded(CURLcode result) override;

    tl::expected<void, QString> setHead();
    void setAnswer();
    void breakOff(const HttpOutcome& outcome);
    template <typename Value>
    Value told(CURLINFO what) const;

    CurlLoop& m_loop;
    const HttpLimits m_limits;
    const HttpRequest m_request;
    const Ended m_ended;
    ReceivedAnswer m_answer;
    std::array<char, CURL_ERROR_SIZE> m_detail{}; ///< curl's own words about a failure
    CurlLines m_head;
    CurlTransfer m_transfer;
    QTimer m_silence;
};

} // namespace lumora
