#pragma once

#include "linux/http/CurlHandles.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <unordered_map>

namespace lumora {

/// Runs curl's transfers on the event loop: watches their sockets, keeps their one timer, and tells
/// whose transfer moved or ended. It knows nothing of HTTP.
class CurlLoop final : public QObject {
public:
    /// Who hears of one transfer. Called from the event loop, never from within add() or remove(),
    /// and may call both. The loop itself must outlive the call.
    class Listener {
    public:
        virtual ~Listener() = default;

        /// Something came or went over the connection of the transfer, whose `socket` is still
        /// open.
        virtual void transferMoved(curl_socket_t socket) = 0;

        /// The transfer is over; the loop has let go of it.
        virtual void transferEnded(CURLcode result) = 0;
    };

    CurlLoop();
    ~CurlLoop() override;

    /// Begins `transfer`, from the event loop. `listener` hears of it until it ends or is removed.
    void add(CURL* transfer, Listener& listener);

    /// Breaks off `transfer` and closes its connection. Harmless for one that is not running.
    void remove(CURL* transfer);

private:
    struct DeleteLater { // for notifiers: they may be in the middle of telling
        void operator()(QSocketNotifier* notifier) const;
    };

    struct Watch {
        std::unique_ptr<QSocketNotifier, DeleteLater> incoming;
        std::unique_ptr<QSocketNotifier, DeleteLater> outgoing;
        CURL* transfer = nullptr;
    };

    static int
    watchSocket(CURL* transfer, curl_socket_t socket, int what, void* loop, void* /*unused*/);
    static int setTimer(CURLM* transfers, long milliseconds, void* loop);

    void watch(CURL* transfer, curl_socket_t socket, int what);
    void socketReady(curl_socket_t socket, int event);
    void act(curl_socket_t socket, int event);
    void tellWhatEnded();

    CurlTransfers m_transfers;
    std::unordered_map<CURL*, Listener*> m_listeners; ///< of the transfers that run
    std::unordered_map<curl_socket_t, Watch> m_watches;
    QTimer m_timer;
};

} // namespace lumora
