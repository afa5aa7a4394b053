#pragma once

#include "linux/appearance/X11Selection.h"
#include "platform/Compositing.h"

namespace lumora {

/// Compositing on X11: it is on as long as somebody owns the selection that stands for it.
class X11Compositing final : public Compositing {
    Q_OBJECT

public:
    /// Follows the default screen of `connection`, the application's own.
    explicit X11Compositing(xcb_connection_t* connection);

private:
    X11Selection m_manager;
};

} // namespace lumora
