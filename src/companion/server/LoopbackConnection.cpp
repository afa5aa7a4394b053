#include "companion/server/LoopbackConnection.h"

#include "companion/server/Greeting.h"

#include <QPointer>

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr std::size_t pieceSize = std::size_t{16} * 1024;

bool mayPass(int error) {
    return error == EAGAIN || error == EINTR;
}

QString wordsFor(int status) {
    switch (status) {
    case 413:
        return u"The body is too large"_s;
    case 431:
        return u"The head is too large"_s;
    default:
        return u"That is no request"_s;
    }
}

HttpAnswer briefingAnswer(const std::shared_ptr<const QByteArray>& briefing, bool headOnly) {
    if (!briefing)
        return errorAnswer(503, u"There is no briefing yet"_s);
    return {.status = 200, .body = *briefing, .allow = {}, .headOnly = headOnly};
}

} // namespace

LoopbackConnection::LoopbackConnection(int socket, LoopbackServer& server)
    : m_socket(socket)
    , m_server(server)
    , m_readable(socket, QSocketNotifier::Read)
    , m_writable(socket, QSocketNotifier::Write) {
    m_writable.setEnabled(false);
    connect(&m_readable, &QSocketNotifier::activated, this, &LoopbackConnection::receive);
    connect(&m_writable, &QSocketNotifier::activated, this, &LoopbackConnection::send);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &LoopbackConnection::end);
    m_limit.start(m_server.m_patience.request);
}

LoopbackConnection::~LoopbackConnection() {
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    ::close(m_socket);
}

void LoopbackConnection::receive() {
    std::array<char, pieceSize> piece;
    const ssize_t count = ::recv(m_socket, piece.data(), piece.size(), 0);
    if (count == 0 || (count < 0 && !mayPass(errno)))
        return end();
    if (count < 0 || m_isAnswered)
        return;
    m_received.append(piece.data(), qsizetype(count));
    const RequestReading reading = readRequest(m_received);
    if (const auto* refused = std::get_if<RequestRefused>(&reading))
        answer(errorAnswer(refused->status, wordsFor(refused->status)));
    else if (const auto* request = std::get_if<HttpRequest>(&reading))
        handle(*request);
}

void LoopbackConnection::handle(const HttpRequest& request) {
    m_isAnswered = true;
    m_received.clear();
    m_readable.setEnabled(false);
    m_limit.start(m_server.m_patience.answer);
    const Admission admission = m_server.admitted(request);
    if (const auto* refusal = std::get_if<HttpAnswer>(&admission))
        return answer(*refusal);
    if (const auto* greeted = std::get_if<GreetingWanted>(&admission))
        return answer(greeting(greeted->headOnly));
    if (const auto* wanted = std::get_if<BriefingWanted>(&admission)) {
        m_server.m_handlers.briefing([connection = QPointer(this), headOnly = wanted->headOnly](
                                         const std::shared_ptr<const QByteArray>& briefing) {
            if (connection)
                connection->answer(briefingAnswer(briefing, headOnly));
        });
        return;
    }
    m_server.m_handlers.act(
        std::get<ServiceAction>(admission),
        [connection = QPointer(this)](const HttpAnswer& answered) {
            if (connection)
                connection->answer(answered);
        });
}

void LoopbackConnection::answer(const HttpAnswer& answer) {
    m_isAnswered = true;
    m_received.clear();
    m_toSend = answerBytes(answer);
    m_limit.start(m_server.m_patience.answer);
    m_readable.setEnabled(false);
    m_writable.setEnabled(true);
}

void LoopbackConnection::send() {
    const ssize_t count = ::send(
        m_socket, m_toSend.constData() + m_sent, size_t(m_toSend.size() - m_sent), MSG_NOSIGNAL);
    if (count < 0 && !mayPass(errno))
        return end();
    m_sent += std::max<ssize_t>(count, 0);
    if (m_sent == m_toSend.size())
        linger();
}

/// Waits for the other end to close: what it still sends would make the system drop the answer.
void LoopbackConnection::linger() {
    m_writable.setEnabled(false);
    m_toSend.clear();
    ::shutdown(m_socket, SHUT_WR);
    m_limit.start(std::min(m_server.m_patience.request, std::chrono::milliseconds(2000)));
    m_readable.setEnabled(true);
}

/// Goes in the next turn of the event loop, not from within one of its own notices.
void LoopbackConnection::end() {
    if (std::exchange(m_isEnding, true))
        return; // by now another connection might have the same number
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    m_limit.stop();
    QTimer::singleShot(
        0, &m_server, [server = &m_server, socket = m_socket] { server->drop(socket); });
}

} // namespace lumora::companion
