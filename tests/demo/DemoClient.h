#pragma once

#include "support/Patience.h"

#include <QHash>
#include <QHostAddress>
#include <QTcpSocket>

#include <memory>
#include <optional>

namespace lumora::tests {

/// What the demo service answered.
struct DemoReply {
    int status = 0;
    QHash<QByteArray, QByteArray> headers; ///< by name in lower case
    QByteArray body;

    QByteArray header(const QByteArray& name) const { return headers.value(name); }
};

/// Asks the demo service, each time on a connection of its own, and waits for the answer. Unlike
/// Qt's access manager it never tries again by itself.
class DemoClient {
public:
    /// A request under way.
    using Exchange = std::shared_ptr<QTcpSocket>;

    /// An empty `token` is not sent.
    DemoClient(quint16 port, QByteArray token)
        : m_port(port)
        , m_token(std::move(token)) {}

    /// Sends a request.
    Exchange
    begin(const QByteArray& method, const QByteArray& path, const QByteArray& body = {}) const {
        auto exchange = std::make_shared<QTcpSocket>();
        exchange->connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
        exchange->write(method + " " + path + " HTTP/1.1\r\nHost: 127.0.0.1\r\n");
        if (!m_token.isEmpty())
            exchange->write("X-Api-Key: " + m_token + "\r\n");
        exchange->write("Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        while (exchange->bytesToWrite() > 0 && exchange->waitForBytesWritten(patience)) {
        }
        return exchange;
    }

    /// Waits for the answer to a request; absent: there was none, or not a whole one.
    static std::optional<DemoReply> end(const Exchange& exchange) {
        while (exchange->waitForReadyRead(patience)) {
        }
        const auto received = exchange->readAll();
        const auto headSize = received.indexOf("\r\n\r\n");
        if (headSize < 0 || !received.startsWith("HTTP/1.1 "))
            return std::nullopt;
        DemoReply reply{received.mid(9, 3).toInt(), {}, received.mid(headSize + 4)};
        for (const auto& line : received.left(headSize).split('\n').mid(1)) {
            const auto colon = line.indexOf(": ");
            reply.headers.insert(line.left(colon).toLower(), line.mid(colon + 2).trimmed());
        }
        return reply;
    }

    std::optional<DemoReply>
    ask(const QByteArray& method, const QByteArray& path, const QByteArray& body = {}) const {
        return end(begin(method, path, body));
    }

    std::optional<DemoReply> get(const QByteArray& path) const { return ask("GET", path); }

    std::optional<DemoReply> post(const QByteArray& path, const QByteArray& body) const {
        return ask("POST", path, body);
    }

private:
    quint16 m_port;
    QByteArray m_token;
};

} // namespace lumora::tests
