#include "companion/server/HttpRequest.h"

#include <algorithm>
#include <charconv>

namespace lumora::companion {

namespace {

constexpr int badRequest = 400;
constexpr int bodyTooLarge = 413;
constexpr int headTooLarge = 431;
constexpr int notImplemented = 501;

bool isTokenCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           QByteArrayView("!#$%&'*+-.^_`|~").contains(c);
}

bool isHttpToken(QByteArrayView text) {
    return !text.isEmpty() && std::ranges::all_of(text, isTokenCharacter);
}

bool isVisible(char c) {
    return c > ' ' && c < '\x7f';
}

/// Whatever may stand in the value of a header: no control character but the tab.
bool isHeaderText(QByteArrayView text) {
    return std::ranges::none_of(
        text, [](char c) { return (c >= '\0' && c < ' ' && c != '\t') || c == '\x7f'; });
}

/// "GET /path HTTP/1.1"
bool readFirstLine(QByteArrayView line, HttpRequest& request) {
    const qsizetype first = line.indexOf(' ');
    const qsizetype second = first < 0 ? -1 : line.indexOf(' ', first + 1);
    if (second < 0)
        return false;
    request.method = line.first(first).toByteArray();
    request.target = line.sliced(first + 1, second - first - 1).toByteArray();
    const QByteArrayView version = line.sliced(second + 1);
    return isHttpToken(request.method) && !request.target.isEmpty() &&
           std::ranges::all_of(request.target, isVisible) &&
           (version == QByteArrayView("HTTP/1.1") || version == QByteArrayView("HTTP/1.0"));
}

bool readHeader(QByteArrayView line, HttpRequest& request) {
    const qsizetype colon = line.indexOf(':');
    if (colon < 0 || !isHttpToken(line.first(colon)))
        return false;
    const QByteArrayView value = line.sliced(colon + 1).trimmed();
    if (!isHeaderText(value))
        return false;
    request.headers += {line.first(colon).toByteArray().toLower(), value.toByteArray()};
    return true;
}

/// Reads the lines up to the empty one.
bool readHead(QByteArrayView head, HttpRequest& request) {
    bool isFirst = true;
    while (!head.isEmpty()) {
        const qsizetype end = head.indexOf(QByteArrayView("\r\n"));
        const QByteArrayView line = end < 0 ? head : head.first(end);
        head = end < 0 ? QByteArrayView() : head.sliced(end + 2);
        if (isFirst ? !readFirstLine(line, request) : !readHeader(line, request))
            return false;
        isFirst = false;
    }
    return !isFirst;
}

qsizetype countOf(const HttpRequest& request, QByteArrayView name) {
    return std::ranges::count_if(
        request.headers, [&](const auto& header) { return header.first == name; });
}

/// The length of the body; absent when it is said twice, or in no number.
std::optional<qint64> bodyLength(const HttpRequest& request) {
    const auto text = request.header("content-length");
    if (!text)
        return 0;
    qint64 length = 0;
    const char* const end = text->constData() + text->size();
    const auto [last, error] = std::from_chars(text->constData(), end, length);
    const bool isOverLong = error == std::errc::result_out_of_range;
    if (last != end || text->startsWith('-') || (error != std::errc() && !isOverLong))
        return std::nullopt;
    return isOverLong ? std::numeric_limits<qint64>::max() : length;
}

} // namespace

std::optional<QByteArray> HttpRequest::header(QByteArrayView name) const {
    const auto found =
        std::ranges::find_if(headers, [&](const auto& header) { return header.first == name; });
    return found == headers.end() ? std::nullopt : std::optional(found->second);
}

RequestReading readRequest(QByteArrayView bytes) {
    const qsizetype headEnd = bytes.indexOf(QByteArrayView("\r\n\r\n"));
    if (headEnd > largestHead || (headEnd < 0 && bytes.size() > largestHead))
        return RequestRefused{headTooLarge};
    if (headEnd < 0)
        return RequestUnfinished{};
    HttpRequest request;
    if (!readHead(bytes.first(headEnd), request))
        return RequestRefused{badRequest};
    if (request.header("transfer-encoding"))
        return RequestRefused{notImplemented};
    if (countOf(request, "content-length") > 1 || countOf(request, "host") != 1)
        return RequestRefused{badRequest};
    const auto length = bodyLength(request);
    if (!length)
        return RequestRefused{badRequest};
    if (*length > largestBody)
        return RequestRefused{bodyTooLarge};
    const QByteArrayView body = bytes.sliced(headEnd + 4);
    if (body.size() < *length)
        return RequestUnfinished{};
    request.body = body.first(*length).toByteArray();
    return request;
}

} // namespace lumora::companion
