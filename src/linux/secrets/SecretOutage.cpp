#include "linux/secrets/SecretOutage.h"

#include <utility>

namespace lumora {

SecretOutage::SecretOutage(Now now)
    : m_now(std::move(now)) {}

bool SecretOutage::begin(const QString& reason) {
    const bool isRelapse = isRecent();
    m_reason = reason;
    m_began = m_now();
    return !isRelapse;
}

std::optional<QString> SecretOutage::reason() const {
    return isRecent() ? m_reason : std::nullopt;
}

bool SecretOutage::isRecent() const {
    return m_began && m_now() - *m_began < duration;
}

} // namespace lumora
