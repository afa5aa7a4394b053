#include "linux/wayland/compositor/FakeCompositor.h"

#include "linux/wayland/compositor/FakeSurfaces.h"

#include <QStringList>

#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <wayland-server.h>

#include <array>
#include <future>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

constexpr std::uint32_t outputVersion = 2;

void release(wl_client*, wl_resource* device) {
    wl_resource_destroy(device);
}

const struct wl_pointer_interface pointerRequests{
    .set_cursor = [](wl_client*, wl_resource*, std::uint32_t, wl_resource*, std::int32_t,
                     std::int32_t) {},
    .release = release,
};
const struct wl_keyboard_interface keyboardRequests{.release = release};
const struct wl_touch_interface touchRequests{.release = release};

void showScreen(wl_client* guest, void*, std::uint32_t version, std::uint32_t id) {
    wl_resource* const screen = wl_resource_create(guest, &wl_output_interface, int(version), id);
    wl_output_send_geometry(screen, 0, 0, 300, 200, 0, "", "", WL_OUTPUT_TRANSFORM_NORMAL);
    wl_output_send_mode(screen, WL_OUTPUT_MODE_CURRENT, 1280, 800, 60'000);
    wl_output_send_scale(screen, 1);
    wl_output_send_done(screen);
}

} // namespace

/// Everything but what the constructor and the destructor do happens in its thread.
class FakeCompositor::Server {
public:
    explicit Server(const Options& options)
        : m_rules{
              .room = options.room,
              .thinks = options.thinks,
              .asked = [this](const QString& request) { note(request); },
          } {
        wl_display_init_shm(m_display);
        offerSurfaces(m_display, options.layerShell, m_rules);
        wl_global_create(m_display, &wl_output_interface, outputVersion, nullptr, showScreen);
        wl_global_create(
            m_display, &wl_seat_interface, int(options.seat), this,
            [](wl_client* guest, void* self, std::uint32_t version, std::uint32_t id) {
                static_cast<Server*>(self)->showSeat(guest, version, id);
            });
        m_calls = wl_event_loop_add_fd(
            wl_display_get_event_loop(m_display), m_wakeUp, WL_EVENT_READABLE,
            [](int, std::uint32_t, void* self) {
                static_cast<Server*>(self)->work();
                return 0;
            },
            this);
        m_thread = std::thread([this] { wl_display_run(m_display); });
    }

    ~Server() {
        perform([this] { wl_display_terminate(m_display); });
        m_thread.join();
        wl_display_destroy_clients(m_display);
        wl_event_source_remove(m_calls);
        wl_display_destroy(m_display);
        ::close(m_wakeUp);
    }

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Does that in the server's thread, and returns when it is done.
    void perform(const std::function<void()>& what) {
        std::promise<void> done;
        {
            const std::scoped_lock lock(m_mutex);
            m_work.emplace_back([&] {
                what();
                done.set_value();
            });
        }
        eventfd_write(m_wakeUp, 1);
        done.get_future().wait();
    }

    void addGuest(int socket) {
        perform([=, this] { wl_client_create(m_display, socket); });
    }

    void setCapabilities(std::uint32_t capabilities) {
        perform([=, this] {
            m_capabilities = capabilities;
            for (wl_resource* seat : m_seats)
                wl_seat_send_capabilities(seat, capabilities);
        });
    }

    std::string takeRequests() {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_requests, {}).join(u", ").toStdString();
    }

private:
    void note(const QString& request) {
        const std::scoped_lock lock(m_mutex);
        m_requests += request;
    }

    void work() {
        eventfd_t times = 0;
        eventfd_read(m_wakeUp, &times);
        std::unique_lock lock(m_mutex);
        const auto work = std::exchange(m_work, {});
        lock.unlock();
        for (const auto& one : work)
            one();
    }

    template <auto* Requests>
    static void addDevice(
        wl_client* guest, wl_resource* seat, std::uint32_t id, const wl_interface& interface) {
        wl_resource* const device =
            wl_resource_create(guest, &interface, wl_resource_get_version(seat), id);
        auto* const server = static_cast<Server*>(wl_resource_get_user_data(seat));
        server->note(u"get %1"_s.arg(QLatin1StringView(interface.name)));
        wl_resource_set_implementation(device, Requests, server, [](wl_resource* gone) {
            static_cast<Server*>(wl_resource_get_user_data(gone))
                ->note(u"end %1"_s.arg(QLatin1StringView(wl_resource_get_class(gone))));
        });
    }

    void showSeat(wl_client* guest, std::uint32_t version, std::uint32_t id) {
        static const struct wl_seat_interface requests{
            .get_pointer =
                [](wl_client* client, wl_resource* seat, std::uint32_t device) {
                    addDevice<&pointerRequests>(client, seat, device, wl_pointer_interface);
                },
            .get_keyboard =
                [](wl_client* client, wl_resource* seat, std::uint32_t device) {
                    addDevice<&keyboardRequests>(client, seat, device, wl_keyboard_interface);
                },
            .get_touch =
                [](wl_client* client, wl_resource* seat, std::uint32_t device) {
                    addDevice<&touchRequests>(client, seat, device, wl_touch_interface);
                },
            .release = lumora::tests::release,
        };
        wl_resource* const seat = wl_resource_create(guest, &wl_seat_interface, int(version), id);
        wl_resource_set_implementation(seat, &requests, this, [](wl_resource* gone) {
            std::erase(static_cast<Server*>(wl_resource_get_user_data(gone))->m_seats, gone);
        });
        m_seats.push_back(seat);
        wl_seat_send_capabilities(seat, m_capabilities);
        if (version >= WL_SEAT_NAME_SINCE_VERSION)
            wl_seat_send_name(seat, "seat");
    }

    wl_display* m_display = wl_display_create();
    int m_wakeUp = eventfd(0, EFD_CLOEXEC);
    wl_event_source* m_calls = nullptr; ///< by which the thread is woken up
    FakeSurfaceRules m_rules;
    std::uint32_t m_capabilities = 0;
    std::vector<wl_resource*> m_seats;
    std::mutex m_mutex; ///< for what follows
    std::vector<std::function<void()>> m_work;
    QStringList m_requests;
    std::thread m_thread;
};

FakeCompositor::FakeCompositor(const Options& options)
    : m_server(std::make_unique<Server>(options)) {}

FakeCompositor::~FakeCompositor() = default;

int FakeCompositor::connect() {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        throw std::runtime_error("there are no sockets");
    m_server->addGuest(ends[0]);
    return ends[1];
}

void FakeCompositor::setCapabilities(std::uint32_t capabilities) {
    m_server->setCapabilities(capabilities);
}

std::string FakeCompositor::takeRequests() {
    return m_server->takeRequests();
}

} // namespace lumora::tests
