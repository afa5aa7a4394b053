#pragma once

#include "support/PrivateDisplay.h"

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QTemporaryDir>

namespace lumora::tests {

/// A Wayland compositor with a bar at its top, in a window on an X server of its own, worked at
/// with that server's pointer and keys.
class SwayDesktop {
public:
    static constexpr QSize size{1280, 800}; ///< pixels
    static constexpr int barThickness = 24; ///< points

    /// Whether this machine has what it takes.
    static bool isInstalled();

    /// Starts it with so many pixels a point. Throws when that fails.
    explicit SwayDesktop(double scale = 1);
    ~SwayDesktop();
    SwayDesktop(const SwayDesktop&) = delete;
    SwayDesktop& operator=(const SwayDesktop&) = delete;

    /// The compositor's socket, as in WAYLAND_DISPLAY.
    QString socket() const;

    void moveTo(QPoint place);

    /// Presses and releases a button at that place, in pixels.
    void click(QPoint place, int button = 1);

    void press(const QString& keys);
    void type(const QString& text);

    /// What the bar leaves of the screen is taken by this, in pixels: whatever is nearly white
    /// there. Null where nothing is.
    QRect bright();

    /// Waits until something bright is there and does not change any more; null if nothing comes.
    QRect comesToBeBright();

    /// Waits until nothing is bright.
    bool comesToBeDark();

private:
    void start(double scale);
    void xdotool(const QStringList& arguments);

    PrivateDisplay m_display;
    QTemporaryDir m_folder;
    double m_scale;
    QProcess m_compositor;
};

} // namespace lumora::tests
