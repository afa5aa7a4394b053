#include "demo/DemoLifetime.h"

#include <QtGlobal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace lumora {

namespace {

/// Where the signal handler leaves word; it may do little more than write.
int s_signalPipe[2] = {-1, -1};

void onSignal(int) {
    const int before = errno;
    const char word = 1;
    [[maybe_unused]] const auto written = ::write(s_signalPipe[1], &word, 1);
    errno = before;
}

void handleSignals(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    for (const int number : {SIGTERM, SIGINT})
        ::sigaction(number, &action, nullptr);
}

/// Whether standard input is at its end.
bool stdinEnded() {
    std::array<char, 4096> dropped;
    const auto count = ::read(STDIN_FILENO, dropped.data(), dropped.size());
    return count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN);
}

} // namespace

DemoLifetime::DemoLifetime() {
    if (::pipe2(s_signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("No pipe: errno %d", errno);
    handleSignals(onSignal);
}

DemoLifetime::~DemoLifetime() {
    handleSignals(SIG_DFL);
    ::close(s_signalPipe[0]);
    ::close(s_signalPipe[1]);
}

void DemoLifetime::wait(bool untilStdinCloses) {
    std::array<pollfd, 2> polled{
        pollfd{.fd = s_signalPipe[0], .events = POLLIN, .revents = 0},
        // A negative descriptor is passed over.
        pollfd{.fd = untilStdinCloses ? STDIN_FILENO : -1, .events = POLLIN, .revents = 0}};
    while (true) {
        if (::poll(polled.data(), polled.size(), -1) < 0) {
            if (errno == EINTR)
                continue;
            return;
        }
        if (polled[0].revents != 0 || (polled[1].revents != 0 && stdinEnded()))
            return;
    }
}

} // namespace lumora
