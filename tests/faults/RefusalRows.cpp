#include "briefing/TextBounds.h"
#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

/// A 404 with this body.
Fault refuses(const QByteArray& body, const QByteArray& headers = {}) {
    return answers("404 Not Found", body, headers);
}

constexpr int huge = 1'000'000;

Fault hugeText() {
    return answersAtLength(
        "404 Not Found", [] { return R"({"error":")" + QByteArray(huge, 'x') + R"("})"; });
}

Fault tooManyBytes() {
    return answersAtLength("404 Not Found", [] { return QByteArray(16 * 1024 * 1024 + 1, ' '); });
}

/// Refuses with this body in two chunks.
Fault refusesInChunks(const QByteArray& body) {
    return says(
        "HTTP/1.1 404 No\r\nTransfer-Encoding: chunked\r\n\r\n" +
        chunked({body.left(9), body.mid(9)}));
}

} // namespace

// What refusals say for the user to read.
std::vector<FaultRow> refusalRows() {
    const QByteArray text = R"({"error":"Come back later"})";
    const FetchEnd said = failed(u"Come back later"_s);
    const FetchEnd unsaid = serverError(404);
    const FetchEnd rejected = failed(u"Token rejected (401)"_s);
    return {
        {"401", rejected, 1, 1, answers("401 Unauthorized")},
        {"401 with a text", rejected, 1, 1, answers("401 Unauthorized", text)},
        {"401 that asks for a password", rejected, 1, 1,
         answers("401 Unauthorized", "", "WWW-Authenticate: Basic realm=\"x\"\r\n")},
        {"401 that asks for a ticket", rejected, 1, 1,
         answers("401 Unauthorized", "", "WWW-Authenticate: Negotiate\r\n")},

        {"400 with a text", said, 1, 1, answers("400 Bad Request", text)},
        {"403 with a text", said, 1, 1, answers("403 Forbidden", text)},
        {"404 with a text", said, 1, 1, answers("404 Not Found", text)},
        {"407 with a text", said, 1, 1, answers("407 Proxy Authentication Required", text)},
        {"409 with a text", said, 1, 1, answers("409 Conflict", text)},
        {"418 with a text", said, 1, 1, answers("418 I'm a teapot", text)},
        {"422 with a text", said, 1, 1, answers("422 Unprocessable Content", text)},
        {"429 with a text", said, 1, 1, answers("429 Too Many Requests", text)},
        {"499 with a text", said, 1, 1, answers("499 Odd", text)},
        {"a text over TLS", said, 1, 1, overTls(refuses(text))},
        {"a text in chunks", said, 1, 1, refusesInChunks(text)},
        {"a text among others", said, 1, 1,
         refuses(R"({"code":7,"error":"Come back later","message":"x"})")},

        {"an empty text", failed(u""_s), 1, 1, refuses(R"({"error":""})")},
        {"a text of blanks", failed(u" \n\t "_s), 1, 1, refuses(R"({"error":" \n\t "})")},
        {"a huge text", failed(QString(longestPassage - 1, u'x') + u'…'), 1, 1, hugeText()},
        {"a text with control characters", failed(u"a\u001b[31mb\0c\u202ed\r\ne"_s), 1, 1,
         refuses(R"({"error":"a\u001b[31mb\u0000c\u202ed\r\ne"})")},
        {"a text in many scripts", failed(u"später · לאחר · 😴"_s), 1, 1,
         refuses(R"({"error":"später · לאחר · 😴"})")},
        {"two texts", failed(u"two"_s), 1, 1, refuses(R"({"error":"one","error":"two"})")},

        {"a text that is a number", unsaid, 1, 1, refuses(R"({"error":42})")},
        {"a text that is nothing", unsaid, 1, 1, refuses(R"({"error":null})")},
        {"a text in a list", unsaid, 1, 1, refuses(R"({"error":["x"]})")},
        {"a nested text", unsaid, 1, 1, refuses(R"({"error":{"message":"x"}})")},
        {"a text of another name", unsaid, 1, 1, refuses(R"({"message":"x","Error":"x"})")},
        {"a text without an object", unsaid, 1, 1, refuses(R"("x")")},
        {"a list of texts", unsaid, 1, 1, refuses(R"([{"error":"x"}])")},
        {"a text cut off", unsaid, 1, 1, refuses(R"({"error":"x)")},
        {"a text before something else", unsaid, 1, 1, refuses(R"({"error":"x"} x)")},
        {"a text in no encoding", unsaid, 1, 1, refuses("{\"error\":\"\xff\xfe\"}")},
        {"a text behind a byte order mark", unsaid, 1, 1, refuses("\xef\xbb\xbf{\"error\":\"x\"}")},
        {"a text too deep", unsaid, 1, 1, refuses(QByteArray(2000, '['))},
        {"a compressed text", unsaid, 1, 1,
         refuses("\x1f\x8b\x08 nonsense", "Content-Encoding: gzip\r\n")},
        {"16 MiB and a byte of refusal", invalid(), 1, 1, tooManyBytes()},
    };
}

} // namespace lumora::tests
