#include "linux/appearance/X11Compositing.h"

namespace lumora {

X11Compositing::X11Compositing(xcb_connection_t* connection)
    : Compositing(false)
    , m_manager(connection, "_NET_WM_CM_S") {
    connect(&m_manager, &X11Selection::ownerChanged, this, [this] {
        setActive(m_manager.owner() != 0);
    });
    setActive(m_manager.owner() != 0);
}

} // namespace lumora
