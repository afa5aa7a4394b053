#pragma once

#include <QByteArrayList>
#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace lumora::tests {

/// A server on a loopback port that does what the test says with each request it has read in full.
/// It speaks no HTTP of its own, so that it can also say what no proper server would.
class ScriptedServer : public QObject {
public:
    /// Called with the connection and one whole request; writes, closes or does nothing.
    using Script = std::function<void(QTcpSocket& connection, const QByteArray& request)>;

    /// Called with each connection once it is there, before anything is read.
    using Greeting = std::function<void(QTcpSocket& connection)>;

    /// `listener` absent: plain TCP. `port` 0: any that is free. Throws when it could not be
    /// opened.
    explicit ScriptedServer(
        Script script, std::unique_ptr<QTcpServer> listener = nullptr, quint16 port = 0);
    ~ScriptedServer() override;

    /// What is done from now on with each connection at once; by default nothing.
    void setGreeting(Greeting greeting) { m_greeting = std::move(greeting); }

    /// The address of `path` on this server, by "127.0.0.1".
    QUrl url(const QString& path, const QString& scheme = QStringLiteral("http")) const;

    quint16 port() const { return m_listener->serverPort(); }

    /// Every request that was read in full, as it came over the wire.
    const QByteArrayList& requests() const { return m_requests; }

    /// How many connections were accepted.
    int connectionCount() const { return m_connectionCount; }

    /// A complete HTTP answer with a Content-Length, which announces the end of the connection
    /// unless `headers` say otherwise. They are whole lines, each ended by CRLF.
    static QByteArray
    answer(const QByteArray& status, const QByteArray& body, const QByteArray& headers = {});

    /// A script that answers every request with `bytes` and closes the connection.
    static Script always(const QByteArray& bytes);

private:
    void acceptAll();
    void read(QTcpSocket& connection);

    Script m_script;
    Greeting m_greeting;
    std::unique_ptr<QTcpServer> m_listener;
    QHash<QTcpSocket*, QByteArray> m_unread;
    QByteArrayList m_requests;
    int m_connectionCount = 0;
};

/// The value of the header line `name` in `request`; absent when there is no such line.
std::optional<QByteArray> header(const QByteArray& request, const QByteArray& name);

} // namespace lumora::tests
