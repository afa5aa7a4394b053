#pragma once

namespace lumora {

/// Until when the demo service runs: SIGTERM or SIGINT and, if asked for, the end of standard
/// input, which ends with the program at its other end however that dies. One per process.
class DemoLifetime {
public:
    /// From here on the two signals no longer kill the process but end the wait.
    DemoLifetime();
    ~DemoLifetime();
    DemoLifetime(const DemoLifetime&) = delete;
    DemoLifetime& operator=(const DemoLifetime&) = delete;

    /// Returns when it is time to end, at once if a signal came before the call. Reads and drops
    /// standard input when `untilStdinCloses`, and leaves it alone otherwise.
    void wait(bool untilStdinCloses);
};

} // namespace lumora
