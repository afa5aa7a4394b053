#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakePreferences.h"
#include "fakes/SwitchedCompositing.h"
#include "pictures/Picture.h"
#include "ui/panel/MenuBarView.h"
#include "ui/window/PanelWindow.h"

#include <optional>
#include <set>

namespace lumora::tests {

/// The panel in its window, in one look, showing values that a state sets. Nothing moves in it.
class PanelStage {
public:
    explicit PanelStage(const Look& look);
    ~PanelStage();

    /// Opens the panel with the values as they are now, or shows them in the open one.
    void open();

    /// Opens it with a briefing of a few minutes ago.
    void open(const Briefing& briefing);

    /// Narrows the picture to `part` and a little around it.
    void narrow(QWidget& part);

    /// Gives `target` the keyboard as a user does who works with it.
    void focus(QWidget& target);

    /// What can be pressed and has this accessible name; ends the test program when there is none.
    QWidget& button(const QString& name);

    /// The panel, or the part that the picture was narrowed to.
    QImage picture();

    FakeClock clock;
    FakePreferences preferences;
    SwitchedCompositing compositing{false};
    ThemeSource themes;
    PlacementScreen screen; ///< with a bar at the top
    LoadState state;
    std::optional<Briefing> lastGood;
    std::optional<Instant> lastUpdated;
    std::set<QString> pending;
    std::optional<QString> actionError;
    bool isConfigured = true;
    bool hasDashboard = true;
    MenuBarView* view;
    PanelWindow window;

private:
    Look m_look;
    QRect m_part; ///< in the window's coordinates; null: all of the panel
};

/// A day with something in every section.
[[nodiscard]] Briefing pictureDay();

/// The same with Arabic titles and names.
[[nodiscard]] Briefing arabicDay();

} // namespace lumora::tests
