#pragma once

#include <QByteArray>
#include <QString>

namespace lumora::companion {

/// What a request gets.
struct HttpAnswer {
    int status = 200;
    QByteArray body;  ///< JSON, unless `type` says otherwise
    QByteArray allow; ///< the methods that there are; empty: not said
    bool headOnly = false;
    QByteArray type{"application/json"}; ///< of the body, as its header says it

    bool operator==(const HttpAnswer&) const = default;
};

/// A refusal, in words that Lumora shows as they stand.
[[nodiscard]] HttpAnswer errorAnswer(int status, const QString& message);

/// What is sent. The connection closes behind it, and nobody may keep it, reinterpret it, or have
/// it load or run anything.
[[nodiscard]] QByteArray answerBytes(const HttpAnswer& answer);

} // namespace lumora::companion
