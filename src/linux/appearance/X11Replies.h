#pragma once

#include <QByteArrayView>

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

namespace lumora {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

/// An answer of the X server; null when it refused.
template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, FreeReply>;

/// The server's numbers for `names`, asked for at once; XCB_ATOM_NONE where it does not answer.
template <std::size_t count>
std::array<xcb_atom_t, count>
internAtoms(xcb_connection_t* connection, const std::array<QByteArrayView, count>& names) {
    std::array<xcb_intern_atom_cookie_t, count> cookies;
    std::ranges::transform(names, cookies.begin(), [connection](QByteArrayView name) {
        return xcb_intern_atom(connection, false, std::uint16_t(name.size()), name.data());
    });
    std::array<xcb_atom_t, count> atoms;
    std::ranges::transform(cookies, atoms.begin(), [connection](auto cookie) {
        const ReplyPointer<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    });
    return atoms;
}

/// The server's number for `name`; XCB_ATOM_NONE when it does not answer.
inline xcb_atom_t internAtom(xcb_connection_t* connection, QByteArrayView name) {
    return internAtoms(connection, std::array{name}).front();
}

/// The kind of an event, whoever sent it.
inline int eventKind(const xcb_generic_event_t& event) {
    constexpr int sentByClient = 0x80;
    return event.response_type & ~sentByClient;
}

} // namespace lumora
