#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

namespace lumora::tests {

namespace {

/// A good briefing with a status that is a success.
Fault success(const QByteArray& status) {
    return answersWith(
        [status](const QByteArray& body) { return ScriptedServer::answer(status, body); });
}

} // namespace

// The statuses that an answer may have, without a text for the user.
std::vector<FaultRow> statusRows() {
    const QByteArray text = R"({"error":"Not read"})";
    return {
        {"101", closed(), 3, 3, says("HTTP/1.1 101 Switching Protocols\r\n\r\n")},
        {"199", closed(), 3, 3, says("HTTP/1.1 199 Odd\r\n\r\n")},

        {"201", loaded(), 1, 1, success("201 Created")},
        {"203", loaded(), 1, 1, success("203 Non-Authoritative Information")},
        {"206", loaded(), 1, 1, success("206 Partial Content")},
        {"299", loaded(), 1, 1, success("299 Odd")},
        {"202 without a body", invalid(), 1, 1, answers("202 Accepted")},
        {"204", invalid(), 1, 1, answers("204 No Content")},
        {"204 with a body", invalid(), 1, 1, success("204 No Content")},
        {"205", invalid(), 1, 1, answers("205 Reset Content")},

        {"400", serverError(400), 1, 1, answers("400 Bad Request")},
        {"402", serverError(402), 1, 1, answers("402 Payment Required")},
        {"403", serverError(403), 1, 1, answers("403 Forbidden", "no")},
        {"404", serverError(404), 1, 1, answers("404 Not Found", "<html>no</html>")},
        {"405", serverError(405), 1, 1, answers("405 Method Not Allowed")},
        {"406", serverError(406), 1, 1, answers("406 Not Acceptable")},
        {"407 of the service", serverError(407), 1, 1,
         answers(
             "407 Proxy Authentication Required", "", "Proxy-Authenticate: Basic realm=\"x\"\r\n")},
        {"408", serverError(408), 1, 1, answers("408 Request Timeout")},
        {"409", serverError(409), 1, 1, answers("409 Conflict")},
        {"410", serverError(410), 1, 1, answers("410 Gone")},
        {"411", serverError(411), 1, 1, answers("411 Length Required")},
        {"412", serverError(412), 1, 1, answers("412 Precondition Failed")},
        {"413", serverError(413), 1, 1, answers("413 Content Too Large")},
        {"414", serverError(414), 1, 1, answers("414 URI Too Long")},
        {"415", serverError(415), 1, 1, answers("415 Unsupported Media Type")},
        {"416", serverError(416), 1, 1, answers("416 Range Not Satisfiable")},
        {"417", serverError(417), 1, 1, answers("417 Expectation Failed")},
        {"418", serverError(418), 1, 1, answers("418 I'm a teapot")},
        {"421", serverError(421), 1, 1, answers("421 Misdirected Request")},
        {"422", serverError(422), 1, 1, answers("422 Unprocessable Content")},
        {"423", serverError(423), 1, 1, answers("423 Locked")},
        {"425", serverError(425), 1, 1, answers("425 Too Early")},
        {"426", serverError(426), 1, 1, answers("426 Upgrade Required", "", "Upgrade: h2c\r\n")},
        {"428", serverError(428), 1, 1, answers("428 Precondition Required")},
        {"429", serverError(429), 3, 3,
         answers("429 Too Many Requests", "", "Retry-After: 3600\r\n")},
        {"431", serverError(431), 1, 1, answers("431 Request Header Fields Too Large")},
        {"451", serverError(451), 1, 1, answers("451 Unavailable For Legal Reasons")},
        {"499", serverError(499), 1, 1, answers("499 Odd")},

        {"500", serverError(500), 3, 3, answers("500 Internal Server Error")},
        {"500 with a text", serverError(500), 3, 3, answers("500 Internal Server Error", text)},
        {"501", serverError(501), 3, 3, answers("501 Not Implemented")},
        {"502", serverError(502), 3, 3, answers("502 Bad Gateway", "<html>nginx</html>")},
        {"503", serverError(503), 3, 3,
         answers("503 Service Unavailable", "", "Retry-After: 3600\r\n")},
        {"503 with a text", serverError(503), 3, 3, answers("503 Service Unavailable", text)},
        {"504", serverError(504), 3, 3, answers("504 Gateway Timeout")},
        {"505", serverError(505), 3, 3, answers("505 HTTP Version Not Supported")},
        {"507", serverError(507), 3, 3, answers("507 Insufficient Storage")},
        {"508", serverError(508), 3, 3, answers("508 Loop Detected")},
        {"511", serverError(511), 3, 3, answers("511 Network Authentication Required")},
        {"599", serverError(599), 3, 3, answers("599 Odd")},
        {"600", serverError(600), 3, 3, answers("600 Odd", text)},
        {"999", serverError(999), 3, 3, answers("999 Odd")},
    };
}

} // namespace lumora::tests
