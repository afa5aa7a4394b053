#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

std::vector<FaultRow> timeRows() {
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    const QByteArray head = ok + "Content-Length: 100000\r\n\r\n";
    const QByteArray chunks = ok + "Transfer-Encoding: chunked\r\n\r\n";
    const QByteArray interim = "HTTP/1.1 103 Early Hints\r\n\r\n";
    const QByteArray record("\x16\x03\x03\x40\x00", 5); // of TLS, with 16 KiB to come
    const QString tls = u"https://127.0.0.1:%1/"_s;
    return {
        {"a name server that hangs", timedOut(), 3, 0, at(u"https://hung.invalid/"_s, nobody())},
        {"silent before the handshake", timedOut(), 3, 0, at(tls, saysAndWaits(""))},
        {"silent in the handshake", timedOut(), 3, 0, at(tls, atOnce(saysAndWaits(record)))},
        {"silent after the handshake", timedOut(), 3, 3, overTls(saysAndWaits(""))},
        {"silent when asked", timedOut(), 3, 3, saysAndWaits("")},
        {"silent in the status line", timedOut(), 3, 3, saysAndWaits("HTTP/1.")},
        {"silent after the status", timedOut(), 3, 3, saysAndWaits(ok)},
        {"silent in the head", timedOut(), 3, 3, saysAndWaits(ok + "Content-Le")},
        {"silent after an interim answer", timedOut(), 3, 3, saysAndWaits(interim)},
        {"silent after the head", timedOut(), 3, 3, saysAndWaits(head)},
        {"silent after the head, over TLS", timedOut(), 3, 3, overTls(saysAndWaits(head))},
        {"silent in the body", timedOut(), 3, 3, saysAndWaits(head + "{\"date\"")},
        {"silent in the body of a refusal", timedOut(), 3, 3,
         saysAndWaits("HTTP/1.1 404 No\r\n\r\nno")},
        {"silent in a chunk", timedOut(), 3, 3, saysAndWaits(chunks + "9\r\n12")},
        {"silent before the last chunk", timedOut(), 3, 3, saysAndWaits(chunks + "2\r\n{}\r\n")},

        {"drips the handshake", timedOut(), 3, 0, at(tls, atOnce(drips(record, "x")))},
        {"drips the status line", timedOut(), 3, 3, drips("HTTP/1.1 200 ", "O")},
        {"drips a header", timedOut(), 3, 3, drips(ok + "X-Filler: ", "x")},
        {"drips headers", timedOut(), 3, 3, drips(ok, "X-Filler: x\r\n")},
        {"drips interim answers", timedOut(), 3, 3, drips(interim, interim)},
        {"drips the body", timedOut(), 3, 3, drips(head, "x")},
        {"drips a body without a length", timedOut(), 3, 3, drips(ok + "\r\n", "x")},
        {"drips chunks", timedOut(), 3, 3, drips(chunks, "1\r\nx\r\n")},
        {"drips a chunk's extension", timedOut(), 3, 3, drips(chunks + "1;x=", "x")},
        {"drips over TLS", timedOut(), 3, 3, overTls(drips(head, "x"))},

        {"answers after the silence", timedOut(), 3, 3, answersTooLate("")},
        {"answers after the deadline", timedOut(), 3, 3, answersTooLate(interim)},
    };
}

} // namespace lumora::tests
