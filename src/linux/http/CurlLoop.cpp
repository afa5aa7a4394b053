#include "linux/http/CurlLoop.h"

#include <utility>

namespace lumora {

void CurlLoop::DeleteLater::operator()(QSocketNotifier* notifier) const {
    notifier->setEnabled(false); // its number may be another socket's before it is gone
    notifier->deleteLater();
}

CurlLoop::CurlLoop()
    : m_transfers(curl_multi_init()) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { act(CURL_SOCKET_TIMEOUT, 0); });
    curl_multi_setopt(m_transfers.get(), CURLMOPT_SOCKETFUNCTION, &CurlLoop::watchSocket);
    curl_multi_setopt(m_transfers.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_transfers.get(), CURLMOPT_TIMERFUNCTION, &CurlLoop::setTimer);
    curl_multi_setopt(m_transfers.get(), CURLMOPT_TIMERDATA, this);
}

CurlLoop::~CurlLoop() {
    for (const auto& [transfer, listener] : m_listeners)
        curl_multi_remove_handle(m_transfers.get(), transfer);
    m_transfers.reset(); // while there is something to tell about its sockets
}

void CurlLoop::add(CURL* transfer, Listener& listener) {
    m_listeners[transfer] = &listener;
    curl_multi_add_handle(m_transfers.get(), transfer);
}

void CurlLoop::remove(CURL* transfer) {
    if (m_listeners.erase(transfer) > 0)
        curl_multi_remove_handle(m_transfers.get(), transfer);
}

int CurlLoop::watchSocket(CURL* transfer, curl_socket_t socket, int what, void* loop, void*) {
    static_cast<CurlLoop*>(loop)->watch(transfer, socket, what);
    return 0;
}

int CurlLoop::setTimer(CURLM*, long milliseconds, void* loop) {
    QTimer& timer = static_cast<CurlLoop*>(loop)->m_timer;
    if (milliseconds < 0)
        timer.stop();
    else
        timer.start(std::chrono::milliseconds(milliseconds));
    return 0;
}

void CurlLoop::watch(CURL* transfer, curl_socket_t socket, int what) {
    if (what == CURL_POLL_REMOVE) {
        m_watches.erase(socket);
        return;
    }
    Watch& watch = m_watches[socket];
    watch.transfer = transfer;
    if (!watch.incoming) {
        const auto notifier = [this, socket](QSocketNotifier::Type type, int event) {
            auto* const made = new QSocketNotifier(socket, type);
            connect(made, &QSocketNotifier::activated, this, [this, socket, event] {
                socketReady(socket, event);
            });
            return made;
        };
        watch.incoming.reset(notifier(QSocketNotifier::Read, CURL_CSELECT_IN));
        watch.outgoing.reset(notifier(QSocketNotifier::Write, CURL_CSELECT_OUT));
    }
    watch.incoming->setEnabled((what & CURL_POLL_IN) != 0);
    watch.outgoing->setEnabled((what & CURL_POLL_OUT) != 0);
}

void CurlLoop::socketReady(curl_socket_t socket, int event) {
    if (const auto watch = m_watches.find(socket); watch != m_watches.end()) {
        const auto listener = m_listeners.find(watch->second.transfer);
        if (listener != m_listeners.end())
            listener->second->transferMoved(socket);
    }
    act(socket, event);
}

void CurlLoop::act(curl_socket_t socket, int event) {
    int running = 0;
    curl_multi_socket_action(m_transfers.get(), socket, event, &running);
    tellWhatEnded();
}

void CurlLoop::tellWhatEnded() {
    int left = 0;
    while (const CURLMsg* const message = curl_multi_info_read(m_transfers.get(), &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        CURL* const transfer = message->easy_handle;
        const CURLcode result = message->data.result;
        const auto listener = m_listeners.extract(transfer);
        curl_multi_remove_handle(m_transfers.get(), transfer); // and with it the message
        if (!listener.empty())
            listener.mapped()->transferEnded(result);
    }
}

} // namespace lumora
