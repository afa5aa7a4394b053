#pragma once

#include <QByteArray>

#include <chrono>

namespace lumora {

/// One accepted connection of the demo service. Every wait on it ends at once when the service
/// stops, so that neither a silent client nor a slow answer holds the service up.
class DemoConnection {
public:
    /// Works on `socket`, which must not block, and closes it in the end. `stop` becomes readable,
    /// and stays so, when the service stops. A client that does not read or write for `patience` is
    /// given up.
    DemoConnection(int socket, int stop, std::chrono::milliseconds patience);
    ~DemoConnection();
    DemoConnection(const DemoConnection&) = delete;
    DemoConnection& operator=(const DemoConnection&) = delete;

    /// What came next; empty when nothing more will.
    QByteArray read();

    /// Sends everything; false: it could not.
    bool write(const QByteArray& bytes);

    /// Lets the client read to the end, and waits until it is gone: a connection closed over unread
    /// bytes of the client's would be reset, and take the answer with it.
    void finish();

    /// Waits for `duration`; false: the service stops.
    bool pause(std::chrono::milliseconds duration) const;

private:
    /// Whether the socket is ready for `events` in time.
    bool await(short events) const;

    int m_socket;
    int m_stop;
    std::chrono::milliseconds m_patience;
};

} // namespace lumora
