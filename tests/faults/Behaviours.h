#pragma once

#include "faults/FaultRow.h"

#include <functional>

namespace lumora::tests {

// What services do, as faults to be put together. Each of the first group waits for a whole
// request, on every connection anew.

/// Sends `bytes` and closes the connection.
Fault says(const QByteArray& bytes);

/// Sends `bytes` and then neither says nor closes anything.
Fault saysAndWaits(const QByteArray& bytes);

/// Sends `bytes` and resets the connection.
Fault saysAndResets(const QByteArray& bytes);

/// Sends `start`, and then `unit` again and again, each long before a client takes it for silence.
Fault drips(const QByteArray& start, const QByteArray& unit);

/// Sends `start`, and then `unit` without end, as fast as it is taken.
Fault floods(const QByteArray& start, const QByteArray& unit);

/// A complete answer with a Content-Length; `headers` are whole lines, each ended by CRLF.
Fault answers(
    const QByteArray& status, const QByteArray& body = {}, const QByteArray& headers = {});

/// The same with a body that is only made when it is asked for.
Fault answersAtLength(const QByteArray& status, std::function<QByteArray()> body);

/// A good answer, but for a client that has waited past its limits. Until then it sends `drip`.
Fault answersTooLate(const QByteArray& drip);

/// Is well: a good briefing.
Fault isWell();

/// What `answer` makes of a good briefing, and closes the connection.
Fault answersWith(std::function<QByteArray(const QByteArray& briefing)> answer);

/// Redirects to `location`, in which %1 stands for the port. Requests for /good are answered well.
Fault redirects(const QByteArray& status, const QByteArray& location);

/// Redirects to where what `fault` says is done.
Fault leadsTo(Fault fault);

/// The same without waiting for a request: done to each connection at once.
Fault atOnce(Fault fault);

/// The same without waiting for a whole request: done as soon as the client has said something.
Fault whenSpokenTo(Fault fault);

/// The same behind TLS.
Fault overTls(Fault fault, TestCertificates::Server certificate = TestCertificates::Server::Valid);

/// The same for a client that goes to `address`, in which %1 stands for the port.
Fault at(const QString& address, Fault fault);

/// The same done by a proxy, as https_proxy names it, to a client on its way to another host.
Fault byProxy(Fault fault, const QString& proxy = QStringLiteral("http://127.0.0.1:%1"));

/// Nobody listens.
Fault nobody();

/// A good briefing, each with a later stamp than the one before.
QByteArray nextBriefing();

/// `parts` in one chunk each, with what ends them.
QByteArray chunked(const QByteArrayList& parts);

} // namespace lumora::tests
