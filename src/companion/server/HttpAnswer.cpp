#include "companion/server/HttpAnswer.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

const char* reasonFor(int status) {
    switch (status) {
    case 200:
        return "OK";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 408:
        return "Request Timeout";
    case 409:
        return "Conflict";
    case 413:
        return "Content Too Large";
    case 431:
        return "Request Header Fields Too Large";
    case 501:
        return "Not Implemented";
    case 503:
        return "Service Unavailable";
    default:
        return "Bad Request";
    }
}

} // namespace

HttpAnswer errorAnswer(int status, const QString& message) {
    const QJsonObject error{{u"error"_s, QString::fromUtf8(message.toUtf8())}};
    return {
        .status = status,
        .body = QJsonDocument(error).toJson(QJsonDocument::Compact),
        .allow = {},
        .headOnly = false};
}

QByteArray answerBytes(const HttpAnswer& answer) {
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' +
                       reasonFor(answer.status) + "\r\nContent-Type: " + answer.type +
                       "\r\nContent-Length: " + QByteArray::number(answer.body.size()) +
                       "\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n"
                       "Content-Security-Policy: default-src 'none'; frame-ancestors 'none'\r\n"
                       "Connection: close\r\n";
    if (!answer.allow.isEmpty())
        bytes += "Allow: " + answer.allow + "\r\n";
    bytes += "\r\n";
    return answer.headOnly ? bytes : bytes + answer.body;
}

} // namespace lumora::companion
