#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace lumora {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

/// An answer of the X server; null when it refused.
template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, FreeReply>;

/// The server's number for `name`; XCB_ATOM_NONE when it does not answer.
inline xcb_atom_t internAtom(xcb_connection_t* connection, const QByteArray& name) {
    const auto cookie =
        xcb_intern_atom(connection, false, std::uint16_t(name.size()), name.constData());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

/// The kind of an event, whoever sent it.
inline int eventKind(const xcb_generic_event_t& event) {
    constexpr int sentByClient = 0x80;
    return event.response_type & ~sentByClient;
}

} // namespace lumora
