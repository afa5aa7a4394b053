#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>

struct xcb_connection_t;

namespace lumora {

/// One of the selections by which a desktop's services show that they are there, followed on the
/// default screen.
class X11Selection final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// `prefix` is the selection's name without the screen's number; `connection` is the
    /// application's own and outlives this object.
    X11Selection(xcb_connection_t* connection, const QByteArray& prefix);
    ~X11Selection() override;

    /// The window that holds the selection; 0 for none.
    std::uint32_t owner() const { return m_owner; }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

Q_SIGNALS:
    void ownerChanged();

private:
    std::uint32_t m_selection;
    int m_selectionNotify; ///< the number of the event to wait for; 0 where there is none
    std::uint32_t m_owner; ///< asked for once it is watched, so that no change is missed
};

} // namespace lumora
