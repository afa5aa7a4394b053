#pragma once

#include "briefing/Instant.h"
#include "ui/window/PanelPlacement.h"

#include <QByteArray>
#include <QObject>
#include <QPoint>

#include <functional>
#include <memory>
#include <optional>

namespace lumora {

class AppState;
class Clock;
class Compositing;
class MenuBarView;
class PanelLayer;
class PanelWindow;
class Preferences;
class ThemeSource;
class Ticker;
class UrlOpener;

/// Makes the panel when it is first opened, or shortly after the first briefing so that opening it
/// takes no time; keeps it in step with the state while it is open, and turns what the user does
/// in it into actions. After that a closed panel is rendered only to let go of a day that is over.
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
        PanelLayer* layer = nullptr; ///< null where windows go where they are asked to
        std::function<void(const QByteArray& activationToken)> openSettings;
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

    /// Has a panel that nobody sees hold the last briefing instead of the one that it showed, which
    /// may have been a large one.
    void letGo();

private:
    PanelWindow& window();
    void connectView();
    void prepareOnce();
    void prepare();
    void renderUnseen();
    void render();
    void capture(const QString& thought);
    void openDashboard();
    void openSettings();
    void openLink(const QUrl& url);
    void handOver(const std::function<void(const QByteArray& activationToken)>& next);

    Dependencies m_with;
    std::unique_ptr<PanelWindow> m_window; ///< null until first opened or prepared
    MenuBarView* m_view = nullptr;         ///< a child of the window
    bool m_preparing = false;              ///< that has been begun, or is not needed any more
    std::optional<Instant> m_held;         ///< when the briefing was stored that the view holds
};

} // namespace lumora
