#pragma once

#include <QWidget>

#include <utility>

namespace lumora::tests {

/// Stands for the toolkit, which opens a window of its own when it shows an icon in a tray on X11.
class TrayWindow {
public:
    /// The program's windows; the one in the tray is among them from the second look on.
    QWidgetList windows() {
        return std::exchange(m_isShown, true) ? QWidgetList{&m_window, &m_other}
                                              : QWidgetList{&m_other};
    }

    QSize room() const { return m_window.minimumSize(); }

    QSize roomOfOther() const { return m_other.minimumSize(); }

private:
    QWidget m_other;
    QWidget m_window;
    bool m_isShown = false;
};

} // namespace lumora::tests
