#pragma once

#include "platform/Compositing.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>

struct xcb_connection_t;

namespace lumora {

/// Compositing on X11: it is on as long as somebody owns the selection that stands for it.
class X11Compositing final : public Compositing, public QAbstractNativeEventFilter {
public:
    /// Follows the default screen of `connection`, the application's own.
    explicit X11Compositing(xcb_connection_t* connection);
    ~X11Compositing() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    std::uint32_t m_selection;
    int m_selectionNotify; ///< the number of the event to wait for; 0 where there is none
};

} // namespace lumora
