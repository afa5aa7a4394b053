#include "linux/http/HeaderValue.h"

#include <algorithm>

namespace lumora {

std::optional<QByteArray> headerValue(const QByteArray& value) {
    QByteArray trimmed = value.trimmed();
    const bool breaksTheLine = std::ranges::any_of(
        trimmed, [](char byte) { return byte == '\r' || byte == '\n' || byte == '\0'; });
    if (breaksTheLine)
        return std::nullopt;
    return trimmed;
}

} // namespace lumora
