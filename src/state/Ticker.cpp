#include "state/Ticker.h"

namespace lumora {

using namespace std::chrono_literals;

Ticker::Ticker(Clock& clock)
    : m_clock(clock)
    , m_now(clock.now())
    , m_timer(clock.every(30s, [this] {
        m_now = m_clock.now();
        Q_EMIT ticked();
    })) {}

} // namespace lumora
