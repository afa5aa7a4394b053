#pragma once

#include <httplib.h>

#include <array>
#include <chrono>

namespace lumora {

/// One accepted connection of the demo service, as the HTTP library reads and writes it. Every
/// wait on it ends at once when the service stops, so that neither a silent client nor a slow
/// answer holds the service up, and it can hang up in place of answering.
class DemoConnection final : public httplib::Stream {
public:
    /// Works on `socket`, which stays the caller's to close. `stop` becomes readable, and stays so,
    /// when the service stops. A client that does not read or write for `patience` is given up.
    DemoConnection(int socket, int stop, std::chrono::milliseconds patience);

    /// Drops everything written from now on.
    void hangUp();

    /// Waits for `duration`; false: the service stops.
    bool pause(std::chrono::milliseconds duration) const;

    bool is_readable() const override;
    bool is_writable() const override;
    ssize_t read(char* data, size_t size) override;
    ssize_t write(const char* data, size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    int socket() const override;

private:
    /// Whether the socket is ready for `events` in time.
    bool await(short events) const;

    int m_socket;
    int m_stop;
    std::chrono::milliseconds m_patience;
    bool m_hungUp = false;
    std::array<char, 4096> m_buffer{}; ///< the HTTP library reads headers byte by byte
    size_t m_bufferUsed = 0;
    size_t m_bufferSize = 0;
};

} // namespace lumora
