#pragma once

#include <QByteArray>
#include <QPoint>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

#include <memory>

struct xcb_connection_t;

namespace lumora::tests {

/// A window manager on an X server, and one window of somebody else's, worked at as a person does:
/// with a pointer and keys that no program can tell from real ones.
class XDesktop {
public:
    /// `display` is the X server's name, as in DISPLAY; it has no other window manager.
    explicit XDesktop(const QByteArray& display);
    ~XDesktop();
    XDesktop(const XDesktop&) = delete;
    XDesktop& operator=(const XDesktop&) = delete;

    /// How many windows with this title can be seen.
    qsizetype windows(const QString& title);

    /// Waits until exactly one window with this title can be seen.
    bool shows(const QString& title);

    /// Waits until no window with this title can be seen.
    bool hides(const QString& title);

    /// Waits until the visible window with this title has the keyboard focus.
    bool focuses(const QString& title);

    /// Both parts of the class of the visible window with this title: the instance and the class,
    /// which window managers' rules go by.
    QStringList windowClass(const QString& title);

    /// Presses and releases the first button there, in pixels.
    void click(QPoint place);

    /// Clicks into the other program's window, which takes the focus by that.
    void clickElsewhere();

    /// Presses and releases a key, or several together: "Escape", "ctrl+r".
    void press(const QString& keys);

    void type(const QString& text);

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    void startWindowManager();
    void openOtherWindow();
    QStringList xdotool(const QStringList& arguments);
    QStringList visible(const QString& title);

    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    QProcess m_windowManager;
    std::unique_ptr<xcb_connection_t, Disconnect> m_other;
};

} // namespace lumora::tests
