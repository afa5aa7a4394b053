#pragma once

#include "platform/Clock.h"
#include "platform/Compositing.h"
#include "platform/PanelLayer.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/ThemeSource.h"
#include "ui/window/DesktopScreens.h"
#include "ui/window/PanelGround.h"
#include "ui/window/PanelPlacement.h"

#include <QWidget>

#include <chrono>
#include <functional>
#include <optional>

namespace lumora {

/// The window that the panel's content drops down in. It stands against the bar with the status
/// item, is as high as its content, and goes away when the user turns to something else.
///
/// The window itself covers all that the panel may ever need at its place and never moves or grows
/// while it is open; what the panel leaves free is cut away. So no window manager takes part in a
/// change of height, and the edge at the bar stands still. Where the program cannot place windows,
/// it is an ordinary small window of the panel's size.
class PanelWindow : public QWidget, public SpokenAs<SpokenRole::Window> {
    Q_OBJECT

public:
    /// What the window depends on; all of it outlives the window.
    struct Dependencies {
        const ThemeSource& themes;
        const Compositing& compositing;
        const Clock& clock;
        PanelLayer* layer = nullptr; ///< to show the window in; null: it goes among the others
        bool placesWindows = true;   ///< whether windows appear where the program asks for
        /// Called before each showing, when the window exists already: to tell the desktop what it
        /// is to know of it.
        std::function<void(const QWidget&)> prepare = [](const QWidget&) {};
        std::function<QList<PlacementScreen>()> screens = desktopScreens;
    };

    /// Takes `content`, which is shown at the height it asks for, or less where the screen is too
    /// low.
    PanelWindow(QWidget* content, const Dependencies& dependencies);
    ~PanelWindow() override;

    /// What a press on the status item does: opens or closes the panel. A press that has just
    /// closed it, by taking the focus away, does not open it again, and the second press of a
    /// double click does not close it.
    void toggle(const AnchorEvidence& evidence, const QByteArray& activationToken = {});

    /// Opens the panel at the status item, or brings it to the front. It remembers the anchor: a
    /// `lastGood` in `evidence` is only used as long as it has none of its own. The token is the
    /// one that came with what the user did; empty where there was none.
    void showAt(const AnchorEvidence& evidence, const QByteArray& activationToken = {});

    /// Does once, where nobody sees it, what makes the first showing slow: finds the fonts, lays
    /// the content out and paints all of it. Does nothing while the panel is open.
    void rehearse();

    /// What the panel covers, in the window's coordinates.
    QRect panelRect() const { return m_panel; }

    /// What the panel covers on the screen, in points.
    [[nodiscard]] QRect panelGeometry() const;

    void setVisible(bool visible) override;

Q_SIGNALS:
    /// The panel is about to be measured and shown: the moment to bring its content up to date.
    void aboutToShow();

    /// The panel went away, however that came about.
    void hidden();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool isRounded() const { return m_with.compositing.isActive(); }

    bool hasShadow() const { return isRounded() && m_with.placesWindows; }

    int borderWidth() const { return isRounded() ? 0 : 1; }

    void openInLayer(const AnchorEvidence& evidence);
    void present(const AnchorEvidence& evidence, const QByteArray& activationToken);
    QList<PlacementScreen> screens() const;
    QSize wantedSize(int maximumWidth) const;
    void arrange();
    void refit();
    void arrangeAtBar();
    void arrangeAsWindow();
    void setPanel(const QRect& panel);
    void followScreens();
    void onDeactivated();
    bool isRecent(std::optional<Instant> instant, std::chrono::milliseconds span) const;

    Dependencies m_with;
    QWidget* m_content;
    PanelGround m_ground;
    std::optional<QPoint> m_lastGoodAnchor; ///< in points
    PlacementScreen m_room;                 ///< with the layer, once that is open
    QRect m_panel;
    QRect m_asked; ///< the last place asked for in this opening; a window manager may know better
    bool m_open = false; ///< what is wanted; the window loses the focus on its way to not being so
    bool m_insisted = false;              ///< on the place asked for, in this opening
    std::optional<Instant> m_opened;      ///< when it last was
    std::optional<Instant> m_deactivated; ///< when that last closed the panel
};

} // namespace lumora
