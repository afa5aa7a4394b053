#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <optional>

namespace lumora {

/// Remembers that nobody answered, so that the next question need not wait as long again to find
/// out the same: for half a minute, or until something is heard of the service. It remembers no
/// success.
class SecretOutage {
public:
    /// A clock that is never set.
    using Now = std::function<std::chrono::steady_clock::time_point()>;

    /// How long an outage is taken to last when nothing is heard of the service.
    static constexpr std::chrono::seconds duration{30};

    explicit SecretOutage(Now now = &std::chrono::steady_clock::now);

    /// Nobody answered, because of `reason` (for people). False when an outage that began less
    /// than half a minute ago had ended: the service comes and goes, or is always too slow.
    bool begin(const QString& reason);

    /// Something was heard of the service: the next question is worth asking.
    void end() { m_reason.reset(); }

    /// Why there is no use in asking; absent while there is.
    [[nodiscard]] std::optional<QString> reason() const;

private:
    bool isRecent() const;

    Now m_now;
    std::optional<QString> m_reason;                              ///< absent once it has ended
    std::optional<std::chrono::steady_clock::time_point> m_began; ///< absent before the first
};

} // namespace lumora
