#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

std::vector<FaultRow> excessRows() {
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    const QByteArray chunks = ok + "Transfer-Encoding: chunked\r\n\r\n";
    const QByteArray interim = "HTTP/1.1 103 Early Hints\r\nLink: <x>\r\n\r\n";
    return {
        {"a status line without end", invalid(), 1, 1, floods("HTTP/1.1 200 ", "O")},
        {"a header without end", invalid(), 1, 1, floods(ok + "X-Filler: ", "x")},
        {"headers without end", invalid(), 1, 1, floods(ok, "X-Filler: x\r\n")},
        {"a folded header without end", invalid(), 1, 1, floods(ok + "X-Filler: x\r\n", " x\r\n")},
        {"interim answers without end", invalid(), 1, 1, floods(interim, interim)},
        {"a body without end", invalid(), 1, 1, floods(ok + "\r\n", " ")},
        {"a body without end over TLS", invalid(), 1, 1, overTls(floods(ok + "\r\n", " "))},
        {"a body without end of a refusal", invalid(), 1, 1,
         floods("HTTP/1.1 404 No\r\n\r\n", " ")},
        {"a length's digits without end", failed(u"The answer is damaged"_s), 3, 3,
         floods(chunks, "0")},
        {"a chunk's extension without end", invalid(), 1, 1, floods(chunks + "1;x=", "x")},
        {"a chunk without end", invalid(), 1, 1, floods(chunks + "7fffffff\r\n", "x")},
        {"chunks without end", invalid(), 1, 1, floods(chunks, "1\r\n \r\n")},
        {"a trailer without end", invalid(), 1, 1, floods(chunks + "0\r\nX-Trailer: ", "x")},
        {"trailers without end", invalid(), 1, 1, floods(chunks + "0\r\n", "X-Trailer: x\r\n")},
        {"something else without end", invalid(), 1, 1, floods("", "nonsense")},
        {"line ends without end", invalid(), 1, 1, floods("", "\r\n")},
        {"something at a TLS port without end", noHandshake(u"wrong version number"_s), 3, 0,
         at(u"https://127.0.0.1:%1/"_s, atOnce(floods("", "nonsense")))},
    };
}

} // namespace lumora::tests
