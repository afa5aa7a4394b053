#include "demo/DemoClock.h"

#include <utility>

namespace lumora {

DemoClock::DemoClock(Source source)
    : m_source(std::move(source)) {}

Instant DemoClock::now() const {
    return m_source() + m_offset;
}

void DemoClock::set(Instant now) {
    m_offset = now - m_source();
}

Instant DemoClock::systemTime() {
    return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
}

} // namespace lumora
