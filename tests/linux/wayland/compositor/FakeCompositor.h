#pragma once

#include <QSize>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace lumora::tests {

/// A compositor in a thread of its own. It shows nothing, is as strict as the real ones about what
/// is an error, and remembers what it was asked for.
class FakeCompositor {
public:
    struct Options {
        std::uint32_t layerShell = 4;        ///< the version; 0: there is none
        std::uint32_t seat = 3;              ///< the version
        QSize room{1280, 770};               ///< for a surface in the layer, in points
        std::chrono::milliseconds thinks{0}; ///< before it says what a surface may have
    };

    explicit FakeCompositor(const Options& options);

    FakeCompositor()
        : FakeCompositor(Options()) {}

    ~FakeCompositor();
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;

    /// A new guest's end of the connection, who closes it.
    [[nodiscard]] int connect();

    /// Says what the seat has, as WL_SEAT_CAPABILITY_*.
    void setCapabilities(std::uint32_t capabilities);

    /// What was asked for since the last time, as far as the protocol's state knows it: what
    /// concerns the layer, viewports and the seat's devices, as "set_layer 2, set_size 20x10".
    [[nodiscard]] std::string takeRequests();

private:
    class Server;

    std::unique_ptr<Server> m_server;
};

} // namespace lumora::tests
