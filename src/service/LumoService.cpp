#include "service/LumoService.h"

#include "briefing/BriefingDecoder.h"
#include "platform/Background.h"
#include "platform/Clock.h"
#include "platform/HttpTransport.h"
#include "service/EndpointPolicy.h"
#include "service/KeychainService.h"
#include "service/ReplyClassification.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <algorithm>
#include <functional>

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

/// The size from which on an answer may take milliseconds to read.
constexpr qsizetype largeAnswer = qsizetype{256} * 1024;

/// What `read` makes of an answer of `size` bytes, without holding up the event loop.
template <typename Result>
QCoro::Task<Result>
readAnswer(Background* background, qsizetype size, std::function<Result()> read) {
    if (size < largeAnswer)
        co_return read();
    co_return co_await background->run(std::move(read));
}

} // namespace

LumoService::LumoService(
    HttpTransport& transport, KeychainService& keychain, Clock& clock, Background& background)
    : m_transport(transport)
    , m_keychain(keychain)
    , m_clock(clock)
    , m_background(background) {}

QCoro::Task<tl::expected<Briefing, LumoError>> LumoService::fetchBriefing(QString endpoint) {
    Background* const background = &m_background; // this object may be gone after the next line
    const Bytes bytes = co_await send(std::move(endpoint), "GET", std::nullopt, maximumTries);
    if (!bytes)
        co_return tl::unexpected(bytes.error());
    const std::function decode = [bytes] { return decodeBriefing(*bytes); };
    auto briefing = co_await readAnswer(background, bytes->size(), decode);
    if (!briefing)
        co_return tl::unexpected(LumoError::invalidResponse());
    co_return *std::move(briefing);
}

QCoro::Task<tl::expected<ActionResult, LumoError>>
LumoService::perform(LumoAction action, QString endpoint) {
    Background* const background = &m_background; // as above
    const Bytes reply =
        co_await send(actionEndpoint(endpoint), "POST", toJson(action), maximumTries);
    if (!reply)
        co_return tl::unexpected(reply.error());
    const std::function decode = [reply] { return decodeActionResult(*reply); };
    co_return co_await readAnswer(background, reply->size(), decode);
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

    Background* const background = &m_background; // as above
    const HttpOutcome outcome =
        co_await m_transport.exchange(authenticatedRequest(*url, *token, method, std::move(body)));
    const std::function classify = [outcome] { return classifyOutcome(outcome); };
    const qsizetype size = outcome ? outcome->body.size() : 0;
    co_return co_await readAnswer(background, size, classify);
}

} // namespace lumora
