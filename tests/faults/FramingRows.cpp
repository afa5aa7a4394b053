#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

/// A good briefing behind `head`.
Fault good(const QByteArray& head, const QByteArray& rest = {}) {
    return answersWith(
        [head, rest](const QByteArray& body) { return head + "\r\n" + body + rest; });
}

/// A good briefing with a Content-Length that is wrong by `difference`.
Fault wrongLength(int difference, const QByteArray& rest = {}) {
    return answersWith([difference, rest](const QByteArray& body) {
        return "HTTP/1.1 200 OK\r\nContent-Length: " +
               QByteArray::number(body.size() + difference) + "\r\n\r\n" + body + rest;
    });
}

/// A good briefing in chunks of so many bytes.
Fault inChunksOf(qsizetype size) {
    return answersWith([size](const QByteArray& briefing) {
        QByteArrayList parts;
        for (qsizetype from = 0; from < briefing.size(); from += size)
            parts += briefing.mid(from, size);
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunked(parts);
    });
}

/// A good briefing in a chunk that has an extension, with a trailer behind it.
Fault decoratedChunk() {
    return answersWith([](const QByteArray& briefing) {
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" +
               QByteArray::number(briefing.size(), 16) + ";a=b\r\n" + briefing +
               "\r\n0\r\nX-Trailer: x\r\n\r\n";
    });
}

/// A good briefing, after which the connection stays open.
Fault staysOpen() {
    Fault fault;
    fault.script = [](QTcpSocket& connection, const QByteArray&) {
        connection.write(
            ScriptedServer::answer("200 OK", nextBriefing(), "Connection: keep-alive\r\n"));
    };
    return fault;
}

/// A good briefing in a transfer coding that nobody asked for.
Fault packed(const QByteArray& coding) {
    return answersWith([coding](const QByteArray& briefing) {
        constexpr qsizetype lengthBefore = 4; // which Qt alone writes
        const QByteArray body = qCompress(briefing).sliced(lengthBefore);
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: " + coding + "\r\n\r\n" +
               (coding.contains("chunked") ? chunked({body}) : body);
    });
}

} // namespace

std::vector<FaultRow> framingRows() {
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    const QByteArray chunks = ok + "Transfer-Encoding: chunked\r\n\r\n";
    const QByteArray interim = "HTTP/1.1 103 Early Hints\r\nLink: <x>\r\n\r\n";
    const FetchEnd damaged = failed(u"The answer is damaged"_s);
    return {
        // What is odd, but clear.
        {"an old version of HTTP", loaded(), 1, 1, good("HTTP/1.0 200 OK\r\n")},
        {"a status without words", loaded(), 1, 1, good("HTTP/1.1 200\r\n")},
        {"lines without carriage returns", loaded(), 1, 1, good("HTTP/1.1 200 OK\n")},
        {"a header over two lines", loaded(), 1, 1, good(ok + "X-One: a\r\n b\r\n")},
        {"a header without a colon", invalid(), 1, 1, good(ok + "nonsense\r\n")},
        {"a header that is no text", loaded(), 1, 1, good(ok + "X-One: \xff\x01\r\n")},
        {"interim answers before the answer", loaded(), 1, 1, good(interim + interim + ok)},
        {"chunks with extensions and trailers", loaded(), 1, 1, decoratedChunk()},
        {"many small chunks", loaded(), 1, 1, inChunksOf(7)},
        {"more bytes than were announced", loaded(), 1, 1, wrongLength(0, "and more")},
        {"stays open after the answer", loaded(), 1, 1, staysOpen()},

        // Lengths.
        {"fewer bytes than were announced", closed(), 3, 3, wrongLength(1)},
        {"more of the briefing than was announced", invalid(), 1, 1, wrongLength(-1)},
        {"a negative length", invalid(), 1, 1, good(ok + "Content-Length: -1\r\n")},
        {"a length that is no number", invalid(), 1, 1, good(ok + "Content-Length: many\r\n")},
        {"a length beyond all numbers", loaded(), 1, 1,
         good(ok + "Content-Length: 99999999999999999999\r\n")},
        {"a length beyond all memory", closed(), 3, 3,
         good(ok + "Content-Length: 9000000000000000000\r\n")},
        {"two lengths", invalid(), 1, 1, good(ok + "Content-Length: 2\r\nContent-Length: 3\r\n")},

        // Chunks.
        {"a chunk's length that is no number", damaged, 3, 3,
         says(chunks + "many\r\nx\r\n0\r\n\r\n")},
        {"a chunk's length beyond all numbers", damaged, 3, 3,
         says(chunks + "fffffffffffffffff\r\nx")},
        {"a negative length of a chunk", damaged, 3, 3, says(chunks + "-1\r\nx\r\n0\r\n\r\n")},
        {"a chunk longer than announced", damaged, 3, 3, says(chunks + "1\r\nxyz\r\n0\r\n\r\n")},
        {"no chunks where they were announced", damaged, 3, 3,
         good(ok + "Transfer-Encoding: chunked\r\n")},
        {"trailers cut off", closed(), 3, 3, says(chunks + "2\r\n{}\r\n0\r\nX-Trailer: x")},
        {"an unknown transfer coding", invalid(), 1, 1,
         good(ok + "Transfer-Encoding: strange\r\n")},
        {"an unasked transfer coding", invalid(), 1, 1, packed("deflate")},
        {"an unasked transfer coding in chunks", invalid(), 1, 1, packed("deflate, chunked")},
        {"no transfer coding", loaded(), 1, 1, good(ok + "Transfer-Encoding: identity\r\n")},

        // What is no HTTP.
        {"a greeting of another protocol", invalid(), 1, 1,
         saysAndWaits("SSH-2.0-OpenSSH_9.2p1\r\n")},
        {"a greeting before the question", invalid(), 1, 1,
         atOnce(saysAndWaits("220 mail ESMTP\r\n"))},
        {"JSON without HTTP", invalid(), 1, 1, says("{\"a\": 1}\n")},
        {"an unknown protocol", invalid(), 1, 1, says("ICY 200 OK\r\n\r\n")},
        {"a status that is no number", invalid(), 1, 1, says("HTTP/1.1 abc OK\r\n\r\n")},
        {"a status of two digits", invalid(), 1, 1, says("HTTP/1.1 20 OK\r\n\r\n")},
        {"a status of four digits", invalid(), 1, 1, says("HTTP/1.1 2000 OK\r\n\r\n")},
        {"a status of zero", invalid(), 1, 1, says("HTTP/1.1 000 OK\r\n\r\n")},
        {"bytes without a meaning", invalid(), 1, 1,
         says(QByteArray("\0\1\2\3\xff\xfe\r\n\r\n", 10))},
        {"an empty line first", invalid(), 1, 1, good("\r\n" + ok)},
    };
}

} // namespace lumora::tests
