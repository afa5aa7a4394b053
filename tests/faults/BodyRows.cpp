#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

constexpr qsizetype limit = 16 * 1024 * 1024;

Fault body(const QByteArray& bytes, const QByteArray& headers = {}) {
    return answers("200 OK", bytes, headers);
}

Fault longBody(std::function<QByteArray()> make) {
    return answersAtLength("200 OK", std::move(make));
}

Fault longBody(const QByteArray& unit) {
    return longBody([unit] { return unit.repeated(limit / unit.size()); });
}

/// A good briefing behind so many blanks that it is as long as may be.
Fault paddedBriefing() {
    return answersWith([](const QByteArray& briefing) {
        return ScriptedServer::answer(
            "200 OK", QByteArray(limit - briefing.size(), ' ') + briefing);
    });
}

Fault tooManyBytesInChunks() {
    return answersWith([](const QByteArray&) {
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" +
               chunked({QByteArray(limit, ' '), "x"});
    });
}

/// A good briefing in which `before` is replaced by `after`.
Fault changed(const QByteArray& before, const QByteArray& after, const QByteArray& headers = {}) {
    return answersWith([before, after, headers](QByteArray body) {
        return ScriptedServer::answer("200 OK", body.replace(before, after), headers);
    });
}

QByteArray nested(qsizetype depth) {
    return QByteArray(depth, '[') + QByteArray(depth, ']');
}

} // namespace

std::vector<FaultRow> bodyRows() {
    const QByteArray utf16("{\0\"\0d\0", 6);
    const QByteArray gzip = QByteArray::fromHex("1f8b0800000000000003abae050043bfa6a302000000");
    const QByteArray brotli = QByteArray::fromHex("0b0080aaaaaaeaff74e5ffff3f7f03");
    return {
        {"nothing", invalid(), 1, 1, body("")},
        {"blanks", invalid(), 1, 1, body(" \r\n\t ")},
        {"HTML", invalid(), 1, 1,
         body("<!DOCTYPE html><title>Log in</title>", "Content-Type: text/html\r\n")},
        {"a word", invalid(), 1, 1, body("OK")},
        {"null", invalid(), 1, 1, body("null")},
        {"a list", invalid(), 1, 1, body("[]")},
        {"an empty object", invalid(), 1, 1, body("{}")},
        {"an error with a good status", invalid(), 1, 1, body(R"({"error":"Come back later"})")},
        {"a briefing cut off", invalid(), 1, 1, changed("}}", "}")},
        {"two briefings", invalid(), 1, 1, changed("}}", "}}{}")},
        {"a briefing and more", invalid(), 1, 1, changed("}}", "}} x")},
        {"a missing member", invalid(), 1, 1, changed("\"date\"", "\"day\"")},
        {"a member of another kind", invalid(), 1, 1, changed("\"total\":2", "\"total\":\"2\"")},
        {"a number out of range", invalid(), 1, 1, changed("\"total\":2", "\"total\":1e999")},
        {"a number that is none", invalid(), 1, 1, changed("\"total\":2", "\"total\":NaN")},
        {"a comment", invalid(), 1, 1, changed("\"total\":2", "\"total\":2/**/")},
        {"a comma too many", invalid(), 1, 1, changed("\"total\":2", "\"total\":2,")},
        {"a key twice", loaded(), 1, 1, changed("\"total\":2", "\"total\":2,\"total\":3")},
        {"a briefing twice in one object", loaded(), 1, 1,
         changed("}}", "},\"date\":\"x\",\"generatedAt\":0.5}")},
        {"a NUL in a text", invalid(), 1, 1, changed("2025-03-04", QByteArray("2025\0-03", 8))},
        {"a NUL behind everything", invalid(), 1, 1, changed("}}", QByteArray("}}\0", 3))},
        {"an escaped NUL", loaded(), 1, 1, changed("2025-03-04", "2025\\u0000")},
        {"half a character", invalid(), 1, 1, changed("2025-03-04", "2025\xc3")},
        {"an overlong character", invalid(), 1, 1, changed("2025-03-04", "\xc0\xaf")},
        {"half a surrogate", invalid(), 1, 1, changed("2025-03-04", "\\ud83d")},
        {"a byte order mark", invalid(), 1, 1, changed("{\"date\"", "\xef\xbb\xbf{\"date\"")},
        {"another encoding", invalid(), 1, 1, body(utf16)},
        {"a type that is not so", loaded(), 1, 1, changed("", "", "Content-Type: image/png\r\n")},

        {"unasked gzip", invalid(), 1, 1, body(gzip, "Content-Encoding: gzip\r\n")},
        {"unasked brotli", invalid(), 1, 1, body(brotli, "Content-Encoding: br\r\n")},
        {"gzip that is none", loaded(), 1, 1, changed("", "", "Content-Encoding: gzip\r\n")},

        {"16 MiB of blanks and a briefing", loaded(), 1, 1, paddedBriefing()},
        {"16 MiB and a byte", invalid(), 1, 1, longBody([] { return QByteArray(limit + 1, ' '); })},
        {"16 MiB and a byte in chunks", invalid(), 1, 1, tooManyBytesInChunks()},
        {"16 MiB of nonsense", invalid(), 1, 1, longBody("x")},
        {"16 MiB of lists in lists", invalid(), 1, 1, longBody("[")},
        {"16 MiB of objects in objects", invalid(), 1, 1, longBody("{\"a\":")},
        {"16 MiB of quotes", invalid(), 1, 1, longBody("\"")},
        {"16 MiB of digits", invalid(), 1, 1, longBody("1")},
        {"16 MiB of empty lists", invalid(), 1, 1,
         longBody([] { return '[' + QByteArray("[],").repeated(limit / 3 - 1) + "[]]"; })},
        {"a briefing with something deep in it", loaded(), 1, 1,
         changed("\"focus\":{}", "\"focus\":{},\"x\":" + nested(900))},
        {"a briefing with something too deep in it", invalid(), 1, 1,
         changed("\"focus\":{}", "\"focus\":{},\"x\":" + nested(2000))},
    };
}

} // namespace lumora::tests
