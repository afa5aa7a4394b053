#include "faults/Behaviours.h"

#include "faults/ClientLimits.h"
#include "support/Fixtures.h"

#include <QSslSocket>
#include <QTimer>

#include <sys/socket.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

using Server = TestCertificates::Server;

/// Closes the connection as a crash of the machine's would be noticed: nothing more is read.
void reset(QTcpSocket& connection) {
    connection.flush();
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(int(connection.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    connection.abort();
}

Fault doing(ScriptedServer::Script script) {
    Fault fault;
    fault.script = std::move(script);
    return fault;
}

void answerWith(QTcpSocket& connection, const QByteArray& bytes) {
    connection.write(bytes);
    connection.disconnectFromHost();
}

qint64 unsentBytes(const QTcpSocket& connection) {
    const auto* const encrypted = qobject_cast<const QSslSocket*>(&connection);
    return connection.bytesToWrite() + (encrypted ? encrypted->encryptedBytesToWrite() : 0);
}

/// Does this again and again, until the connection is gone.
void repeat(
    QTcpSocket& connection, std::chrono::milliseconds interval, std::function<void()> action) {
    auto* const timer = new QTimer(&connection);
    QObject::connect(timer, &QTimer::timeout, &connection, std::move(action));
    QObject::connect(&connection, &QTcpSocket::disconnected, timer, &QTimer::stop);
    timer->start(interval);
}

void keepDripping(QTcpSocket& connection, const QByteArray& unit) {
    repeat(connection, ClientLimits::hurried.inactivity / 10, [&connection, unit] {
        connection.write(unit);
    });
}

} // namespace

Fault says(const QByteArray& bytes) {
    return doing(ScriptedServer::always(bytes));
}

Fault saysAndWaits(const QByteArray& bytes) {
    return doing([bytes](QTcpSocket& connection, const QByteArray&) { connection.write(bytes); });
}

Fault saysAndResets(const QByteArray& bytes) {
    return doing([bytes](QTcpSocket& connection, const QByteArray&) {
        connection.write(bytes);
        reset(connection);
    });
}

Fault drips(const QByteArray& start, const QByteArray& unit) {
    return doing([start, unit](QTcpSocket& connection, const QByteArray&) {
        connection.write(start);
        keepDripping(connection, unit);
    });
}

Fault floods(const QByteArray& start, const QByteArray& unit) {
    return doing([start, unit](QTcpSocket& connection, const QByteArray&) {
        constexpr qsizetype atATime = 64 * 1024;
        const QByteArray flood = unit.repeated(1 + atATime / unit.size());
        connection.write(start);
        repeat(connection, {}, [&connection, flood] {
            if (unsentBytes(connection) < atATime)
                connection.write(flood);
        });
    });
}

Fault answers(const QByteArray& status, const QByteArray& body, const QByteArray& headers) {
    return says(ScriptedServer::answer(status, body, headers));
}

Fault answersAtLength(const QByteArray& status, std::function<QByteArray()> body) {
    return doing([status, body = std::move(body)](QTcpSocket& connection, const QByteArray&) {
        answerWith(connection, ScriptedServer::answer(status, body()));
    });
}

Fault answersTooLate(const QByteArray& drip) {
    return doing([drip](QTcpSocket& connection, const QByteArray&) {
        if (!drip.isEmpty())
            keepDripping(connection, drip);
        QTimer::singleShot(ClientLimits::hurried.total * 5 / 4, &connection, [&connection] {
            answerWith(connection, ScriptedServer::answer("200 OK", nextBriefing()));
        });
    });
}

Fault isWell() {
    return answersWith(
        [](const QByteArray& briefing) { return ScriptedServer::answer("200 OK", briefing); });
}

Fault answersWith(std::function<QByteArray(const QByteArray& briefing)> answer) {
    return doing([answer = std::move(answer)](QTcpSocket& connection, const QByteArray&) {
        answerWith(connection, answer(nextBriefing()));
    });
}

Fault redirects(const QByteArray& status, const QByteArray& location) {
    return doing([status, location](QTcpSocket& connection, const QByteArray& request) {
        const QByteArray port = QByteArray::number(connection.localPort());
        const QByteArray header = "Location: " + QByteArray(location).replace("%1", port) + "\r\n";
        const bool isThere = request.split(' ').value(1).startsWith("/good");
        answerWith(
            connection, isThere ? ScriptedServer::answer("200 OK", nextBriefing())
                                : ScriptedServer::answer(status, "elsewhere", header));
    });
}

Fault leadsTo(Fault fault) {
    fault.script = [script = std::move(fault.script)](
                       QTcpSocket& connection, const QByteArray& request) {
        if (request.split(' ').value(1) == "/there")
            script(connection, request);
        else
            answerWith(connection, ScriptedServer::answer("302 Found", {}, "Location: /there\r\n"));
    };
    return fault;
}

Fault atOnce(Fault fault) {
    fault.greeting = [script = std::exchange(fault.script, {})](QTcpSocket& connection) {
        script(connection, {});
    };
    fault.script = [](QTcpSocket&, const QByteArray&) {};
    return fault;
}

Fault whenSpokenTo(Fault fault) {
    fault.greeting = [script = std::exchange(fault.script, {})](QTcpSocket& connection) {
        const auto speak = [&connection, script] { script(connection, {}); };
        QObject::connect(
            &connection, &QTcpSocket::readyRead, &connection, speak, Qt::SingleShotConnection);
    };
    fault.script = [](QTcpSocket&, const QByteArray&) {};
    return fault;
}

Fault overTls(Fault fault, Server certificate) {
    fault.door = Fault::Door::Encrypted;
    fault.certificate = certificate;
    return at(u"https://127.0.0.1:%1/api/briefing"_s, std::move(fault));
}

Fault at(const QString& address, Fault fault) {
    fault.address = address;
    return fault;
}

Fault byProxy(Fault fault, const QString& proxy) {
    fault.proxy = proxy;
    return at(u"https://service.invalid/api/briefing"_s, std::move(fault));
}

Fault nobody() {
    Fault fault;
    fault.door = Fault::Door::Closed;
    return fault;
}

QByteArray nextBriefing() {
    static int stamp = 0;
    return briefingBody(++stamp);
}

QByteArray chunked(const QByteArrayList& parts) {
    QByteArray bytes;
    for (const QByteArray& part : parts)
        bytes += QByteArray::number(part.size(), 16) + "\r\n" + part + "\r\n";
    return bytes + "0\r\n\r\n";
}

} // namespace lumora::tests
