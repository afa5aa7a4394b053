#include "service/LumoService.h"

#include "briefing/BriefingDecoder.h"
#include "platform/Clock.h"
#include "platform/HttpTransport.h"
#include "service/EndpointPolicy.h"
#include "service/KeychainService.h"
#include "service/ReplyClassification.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <algorithm>

namespace lumora {

namespace {

constexpr int maximumTries = 3;
constexpr std::chrono::milliseconds firstWait(500);

HttpRequest authenticatedRequest(
    const QUrl& url, const Wiped<QString>& token, const QByteArray& method,
    std::optional<QByteArray> body) {
    HttpRequest request;
    request.method = method;
    request.url = url;
    request.headers = {{"X-Api-Key", token.text().toUtf8()}, {"Accept", "application/json"}};
    if (body)
        request.headers.emplaceBack("Content-Type", "application/json");
    request.body = std::move(body);
    return request;
}

QByteArray toJson(const LumoAction& action) {
    QJsonObject object;
    for (const auto& [name, value] : action.body().asKeyValueRange())
        object.insert(name, value);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

LumoService::LumoService(HttpTransport& transport, KeychainService& keychain, Clock& clock)
    : m_transport(transport)
    , m_keychain(keychain)
    , m_clock(clock) {}

QCoro::Task<tl::expected<Briefing, LumoError>> LumoService::fetchBriefing(QString endpoint) {
    const Bytes bytes = co_await send(std::move(endpoint), "GET", std::nullopt, maximumTries);
    if (!bytes)
        co_return tl::unexpected(bytes.error());
    auto briefing = decodeBriefing(*bytes);
    if (!briefing)
        co_return tl::unexpected(LumoError::invalidResponse());
    co_return *std::move(briefing);
}

QCoro::Task<tl::expected<ActionResult, LumoError>>
LumoService::perform(LumoAction action, QString endpoint) {
    const Bytes reply =
        co_await send(actionEndpoint(endpoint), "POST", toJson(action), maximumTries);
    if (!reply)
        co_return tl::unexpected(reply.error());
    co_return decodeActionResult(*reply);
}

QCoro::Task<LumoService::Bytes> LumoService::send(
    QString endpoint, QByteArray method, std::optional<QByteArray> body, int attempts) {
    const QPointer<LumoService> self(this);
    const int lastIndex = std::max(attempts - 1, 0);
    for (int index = 0;; ++index) {
        Bytes bytes = co_await sendOnce(endpoint, method, body);
        if (!self || bytes || !bytes.error().isRetryable() || index == lastIndex)
            co_return bytes;
        co_await m_clock.wait(firstWait * (1 << index));
        if (!self)
            co_return bytes;
    }
}

QCoro::Task<LumoService::Bytes>
LumoService::sendOnce(QString endpoint, QByteArray method, std::optional<QByteArray> body) {
    const auto token = m_keychain.getToken();
    if (!token) {
        m_keychain.askToUnlock();
        co_return tl::unexpected(LumoError::notConfigured());
    }
    const auto url = parseEndpoint(endpoint);
    if (!url)
        co_return tl::unexpected(url.error());
    if (const auto allowed = checkTokenMayGoTo(*url); !allowed)
        co_return tl::unexpected(allowed.error());

    // This object may be gone when the answer is there.
    const HttpOutcome outcome =
        co_await m_transport.exchange(authenticatedRequest(*url, *token, method, std::move(body)));
    co_return classifyOutcome(outcome);
}

} // namespace lumora
