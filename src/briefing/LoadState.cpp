#include "briefing/LoadState.h"

namespace lumora {

std::optional<QString> LoadState::failureMessage() const {
    const auto* failed = std::get_if<Failed>(&m_value);
    return failed ? std::optional(failed->message) : std::nullopt;
}

QString LoadState::name() const {
    static const QString names[] = {
        QStringLiteral("idle"),
        QStringLiteral("loading"),
        QStringLiteral("loaded"),
        QStringLiteral("failed"),
    };
    return names[m_value.index()];
}

bool LoadState::operator==(const LoadState& other) const {
    if (m_value.index() != other.m_value.index())
        return false;
    if (const auto* loaded = std::get_if<Loaded>(&m_value))
        return loaded->generatedAt == std::get<Loaded>(other.m_value).generatedAt;
    return failureMessage() == other.failureMessage();
}

} // namespace lumora
