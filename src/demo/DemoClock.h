#pragma once

#include "briefing/Instant.h"

#include <functional>

namespace lumora {

/// The demo service's own time: it runs as fast as the real clock, and can be set.
class DemoClock {
public:
    /// Where the real time comes from.
    using Source = std::function<Instant()>;

    /// Shows the time of `source`, the system's clock unless told otherwise.
    explicit DemoClock(Source source = systemTime);

    /// The service's present time.
    Instant now() const;

    /// Makes `now` the present time; the clock runs on from there.
    void set(Instant now);

    /// The system's clock.
    static Instant systemTime();

private:
    Source m_source;
    Instant::duration m_offset{0};
};

} // namespace lumora
