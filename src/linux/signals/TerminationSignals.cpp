#include "linux/signals/TerminationSignals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace lumora {

namespace {

constexpr std::array handledSignals = {SIGTERM, SIGINT, SIGHUP};

/// Where the handler leaves word; it may do little more than write.
int s_pipe[2] = {-1, -1};

std::array<struct sigaction, handledSignals.size()> s_before;

void onSignal(int) {
    const int errorBefore = errno;
    const char word = 1;
    [[maybe_unused]] const auto written = ::write(s_pipe[1], &word, 1);
    errno = errorBefore;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent) {
    if (::pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("No pipe: errno %d", errno);
    auto* const notifier = new QSocketNotifier(s_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        std::array<char, 64> words;
        while (::read(s_pipe[0], words.data(), words.size()) > 0) {
        }
        Q_EMIT requested();
    });

    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < handledSignals.size(); ++i) {
        ::sigaction(handledSignals[i], nullptr, &s_before[i]);
        if (s_before[i].sa_handler != SIG_IGN)
            ::sigaction(handledSignals[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    for (std::size_t i = 0; i < handledSignals.size(); ++i)
        ::sigaction(handledSignals[i], &s_before[i], nullptr);
    ::close(s_pipe[0]);
    ::close(s_pipe[1]);
}

} // namespace lumora
