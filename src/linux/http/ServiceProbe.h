#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>

namespace lumora {

/// How far one GET got on its way, and what it met.
struct ServiceProbe {
    /// The parts of the way, in their order.
    enum class Stage { Proxy, NameLookup, Connection, Tls, Answer, Complete };

    /// What is wrong with a server's certificate.
    enum class Certificate { Sound, Expired, NotYetValid, Untrusted, OtherName, Unknown };

    Stage reached = Stage::NameLookup; ///< where it ended; Complete: with an answer
    QString trouble;                   ///< why it ended there, in curl's words; empty if Complete
    bool timedOut = false;
    Certificate certificate = Certificate::Sound;
    int status = 0; ///< of the answer that stands after redirects within the origin
    QByteArray contentType;
    QByteArray date;     ///< of the answer's head, as it stands there; empty: none
    QUrl redirect;       ///< where the answer leads to, without having been followed; else invalid
    QByteArray body;     ///< as much of it as is taken
    bool cutOff = false; ///< the body is larger than is taken
};

/// Asks for `url` as the program does, with the same trust, proxy and redirects, once, and waits
/// for it: to be called where that may take as long as `limit`. An empty `token` is not sent.
[[nodiscard]] ServiceProbe
probeService(const QUrl& url, const QByteArray& token, std::chrono::milliseconds limit);

} // namespace lumora
