#include "linux/commands/ReaderWatch.h"

#include <QSocketNotifier>

#include <sys/epoll.h>
#include <unistd.h>

namespace lumora {

namespace {

/// Something to wait on that becomes readable when `file` has no reader any more; -1 for a file
/// that cannot lose one. A notifier of the toolkit's for `file` itself would wait for input too,
/// which terminals and sockets have.
int waitForHangUp(int file) {
    const int poll = epoll_create1(EPOLL_CLOEXEC);
    epoll_event nothingButTheEnd{};
    if (poll >= 0 && epoll_ctl(poll, EPOLL_CTL_ADD, file, &nothingButTheEnd) == 0)
        return poll;
    if (poll >= 0)
        close(poll);
    return -1;
}

} // namespace

ReaderWatch::ReaderWatch(int file)
    : m_poll(waitForHangUp(file)) {
    if (m_poll < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_poll, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false); // it stays so, and once is enough
        Q_EMIT gone();
    });
}

ReaderWatch::~ReaderWatch() {
    m_notifier.reset();
    if (m_poll >= 0)
        close(m_poll);
}

} // namespace lumora
