#include "demo/DemoHttp.h"

#include <QList>

namespace lumora {

namespace {

constexpr qsizetype kLargestHead = qsizetype(16) * 1024;
constexpr qsizetype kLargestBody = qsizetype(1024) * 1024;

struct Header {
    QByteArray name; ///< in lower case
    QByteArray value;
};

std::optional<Header> headerFrom(const QByteArray& line) {
    const auto colon = line.indexOf(':');
    if (colon < 1)
        return std::nullopt;
    return Header{line.left(colon).toLower(), line.mid(colon + 1).trimmed()};
}

/// The method and the path; nothing else yet.
std::optional<DemoRequest> requestFrom(const QByteArray& line) {
    const auto words = line.split(' ');
    if (words.size() != 3 || words[0].isEmpty() || !words[2].startsWith("HTTP/1."))
        return std::nullopt;
    const auto path = words[1].split('?').first();
    return DemoRequest{words[0], QByteArray::fromPercentEncoding(path), {}, {}};
}

} // namespace

tl::expected<std::optional<DemoRequest>, int> demoRequestFrom(const QByteArray& received) {
    const QByteArray end = "\r\n\r\n";
    const auto headSize = received.indexOf(end);
    if ((headSize < 0 ? received.size() : headSize) > kLargestHead)
        return tl::unexpected(431);
    if (headSize < 0)
        return std::nullopt;
    auto lines = received.left(headSize).replace("\r\n", "\n").split('\n');
    auto request = requestFrom(lines.takeFirst());
    if (!request)
        return tl::unexpected(400);
    qsizetype bodySize = 0;
    for (const auto& line : lines) {
        const auto header = headerFrom(line);
        bool good = header.has_value();
        if (good && header->name == "content-length")
            bodySize = header->value.toLongLong(&good);
        if (!good || bodySize < 0)
            return tl::unexpected(400);
        if (header->name == "transfer-encoding")
            return tl::unexpected(411);
        if (header->name == "x-api-key")
            request->token = header->value;
    }
    if (bodySize > kLargestBody)
        return tl::unexpected(413);
    request->body = received.mid(headSize + end.size(), bodySize);
    if (request->body.size() < bodySize)
        return std::nullopt;
    return request;
}

DemoAnswer demoRefusal(int status) {
    return {.status = status, .body = R"({"error":"Not understood"})"};
}

QByteArray demoResponse(const DemoAnswer& answer, bool withBody) {
    auto response = "HTTP/1.1 " + QByteArray::number(answer.status) + " \r\n";
    const auto add = [&](const QByteArray& name, const QByteArray& value) {
        response += name + ": " + value + "\r\n";
    };
    add("Content-Type", answer.contentType);
    add("Content-Length", QByteArray::number(answer.body.size()));
    add("Connection", "close");
    if (!answer.allow.isEmpty())
        add("Allow", answer.allow);
    response += "\r\n";
    return withBody ? response + answer.body : response;
}

} // namespace lumora
