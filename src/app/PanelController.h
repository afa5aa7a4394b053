#pragma once

#include "ui/window/PanelPlacement.h"

#include <QByteArray>
#include <QObject>
#include <QPoint>

#include <functional>
#include <memory>

namespace lumora {

class AppState;
class Clock;
class Compositing;
class MenuBarView;
class PanelWindow;
class Preferences;
class ThemeSource;
class Ticker;
class UrlOpener;

/// Makes the panel when it is first opened, or shortly after the first briefing so that opening it
/// takes no time; keeps it in step with the state while it is open, and turns what the user does
/// in it into actions. After that a closed panel is not rendered.
class PanelController : public QObject {
    Q_OBJECT

public:
    /// What the controller works with; all of it outlives the controller.
    struct Dependencies {
        AppState& state;
        const Ticker& ticker;
        Preferences& preferences;
        Clock& clock;
        UrlOpener& urls;
        const ThemeSource& themes;
        const Compositing& compositing;
        std::function<void()> openSettings;
        std::function<void()> quit;
    };

    explicit PanelController(Dependencies dependencies);
    ~PanelController() override;

    /// Opens or closes the panel, as a press on the status item does. `position` is where the host
    /// says that was, in device pixels.
    void toggle(QPoint position, const QByteArray& activationToken);

    /// Opens the panel from the status item's menu.
    void openFromMenu(const QByteArray& activationToken);

    /// Opens the panel, or brings it to the front, at a command.
    void open(const QByteArray& activationToken);

    /// Opens or closes the panel at a command.
    void toggle(const QByteArray& activationToken);

    /// Closes the panel, if it is open.
    void hide();

private:
    PanelWindow& window();
    void connectView();
    void prepareOnce();
    void prepare();
    void render();
    void capture(const QString& thought);
    void openDashboard();

    Dependencies m_with;
    std::unique_ptr<PanelWindow> m_window; ///< null until first opened or prepared
    MenuBarView* m_view = nullptr;         ///< a child of the window
    bool m_preparing = false;              ///< that has been begun, or is not needed any more
};

} // namespace lumora
