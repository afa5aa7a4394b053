#pragma once

#include <QObject>

namespace lumora {

/// Whether the desktop blends windows into each other, so that a window may have round corners
/// and a shadow of its own.
class Compositing : public QObject {
    Q_OBJECT

public:
    explicit Compositing(bool active)
        : m_active(active) {}

    bool isActive() const { return m_active; }

Q_SIGNALS:
    /// Compositing was switched on or off.
    void changed();

protected:
    void setActive(bool active) {
        if (m_active == active)
            return;
        m_active = active;
        Q_EMIT changed();
    }

private:
    bool m_active;
};

} // namespace lumora
