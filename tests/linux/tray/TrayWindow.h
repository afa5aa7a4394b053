#pragma once

#include <QWidget>

namespace lumora::tests {

/// Stands for the toolkit, which opens a window of its own when it shows an icon in a tray on X11.
class TrayWindow {
public:
    /// The program's windows; the one in the tray is among them at every second look.
    QWidgetList windows() {
        m_isShown = !m_isShown;
        return m_isShown ? QWidgetList{&m_other} : QWidgetList{&m_window, &m_other};
    }

    QSize room() const { return m_window.minimumSize(); }

    /// As a window has it that nobody has asked for more.
    void forgetRoom() { m_window.setMinimumSize(0, 0); }

    QSize roomOfOther() const { return m_other.minimumSize(); }

private:
    QWidget m_other;
    QWidget m_window;
    bool m_isShown = false;
};

} // namespace lumora::tests
