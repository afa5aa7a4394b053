#include "linux/wayland/ActivationRequest.h"

#include <xdg-activation-client.h>

#include <chrono>
#include <utility>

namespace lumora {

namespace {

using namespace std::chrono_literals;

/// Whoever has pressed something is waiting.
constexpr auto tokenPatience = 300ms;

} // namespace

ActivationRequest::ActivationRequest(
    const WaylandGlobals& globals, wl_surface* surface,
    std::function<void(const QByteArray& token)> given)
    : m_given(std::move(given)) {
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { give({}); });
    m_patience.start(globals.activation() ? tokenPatience : 0ms);
    if (!globals.activation())
        return;
    m_token.reset(xdg_activation_v1_get_activation_token(globals.activation()));
    static const xdg_activation_token_v1_listener listener{
        .done = [](void* self, xdg_activation_token_v1*,
                   const char* token) { static_cast<ActivationRequest*>(self)->give(token); },
    };
    xdg_activation_token_v1_add_listener(m_token.get(), &listener, this);
    const WaylandInput::Press press = globals.input().lastPress();
    if (press.seat)
        xdg_activation_token_v1_set_serial(m_token.get(), press.serial, press.seat);
    if (surface)
        xdg_activation_token_v1_set_surface(m_token.get(), surface);
    xdg_activation_token_v1_commit(m_token.get());
}

void ActivationRequest::give(const QByteArray& token) {
    m_patience.stop();
    if (const auto given = std::exchange(m_given, nullptr))
        given(token); // which may end this object
}

} // namespace lumora
