#pragma once

#include "briefing/Briefing.h"
#include "service/LumoAction.h"
#include "service/LumoError.h"

#include <QCoroTask>
#include <QObject>

#include <tl/expected.hpp>

#include <optional>

namespace lumora {

class Background;
class Clock;
class HttpTransport;
class KeychainService;

/// The client of the user's dashboard service, and the only one who talks to it. Keeps nothing
/// between calls, so calls may overlap; the token is read anew for every request.
///
/// Everything happens on the main thread but the reading of large answers, which would hold it up.
/// The service may be destroyed while calls are under way: a call then makes no further request and
/// ends with its latest error.
class LumoService final : public QObject {
public:
    /// The collaborators must outlive this object.
    LumoService(
        HttpTransport& transport, KeychainService& keychain, Clock& clock, Background& background);

    /// Fetches the briefing from `endpoint`, the text as the user typed it. A failure that may pass
    /// is tried again, three tries in all. A body that is no briefing is an invalidResponse.
    [[nodiscard]] QCoro::Task<tl::expected<Briefing, LumoError>> fetchBriefing(QString endpoint);

    /// Posts `action` to the action endpoint beside the briefing's `endpoint`, with the same tries
    /// as fetchBriefing. Every successful answer is a result, whatever its body says.
    [[nodiscard]] QCoro::Task<tl::expected<ActionResult, LumoError>>
    perform(LumoAction action, QString endpoint);

private:
    using Bytes = tl::expected<QByteArray, LumoError>;

    QCoro::Task<Bytes>
    send(QString endpoint, QByteArray method, std::optional<QByteArray> body, int attempts);
    QCoro::Task<Bytes>
    sendOnce(QString endpoint, QByteArray method, std::optional<QByteArray> body);

    HttpTransport& m_transport;
    KeychainService& m_keychain;
    Clock& m_clock;
    Background& m_background;
};

} // namespace lumora
