#pragma once

#include "ui/panel/BriefingView.h"
#include "ui/rows/SpokenRole.h"

namespace lumora {

class CaptureField;
class ContentScroller;
class FocusRing;
class PanelFooter;
class PanelPlaceholder;

/// The drop-down panel's content: header, briefing or placeholder, capture field, footer. It shows
/// the values it is given and reports what the user wants; it knows nothing of where it is shown.
/// Where it gets less height than it would like, what is in the middle scrolls.
class MenuBarView : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    explicit MenuBarView(const BriefingView::Dependencies& dependencies, QWidget* parent = nullptr);

    /// Shows `values`; what did not change is not touched.
    void render(const PanelValues& values);

    /// Lets time pass for what hides itself again.
    void tick(Instant now);

    /// The design's width, and the height that all of it needs at the present one.
    QSize sizeHint() const override;

    /// Scrolls the briefing to its beginning.
    void scrollToTop();

    BriefingView* briefing() const { return m_briefing; }

    CaptureField* capture() const { return m_capture; }

    PanelFooter* footer() const { return m_footer; }

    ContentScroller* scroller() const { return m_scroller; }

protected:
    /// Tab goes through the panel in reading order, round and round.
    bool focusNextPrevChild(bool next) override;

    /// The arrow keys, Home and End go to everything that is read, also where Tab passes by. The
    /// page keys scroll.
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();
    void takeFocus(QWidget& stop, Qt::FocusReason reason);

    const ThemeSource& m_themes;
    PaintedRow* m_header;
    QWidget* m_middle;
    PanelPlaceholder* m_placeholder;
    BriefingView* m_briefing;
    ContentScroller* m_scroller;
    CaptureField* m_capture;
    PanelFooter* m_footer;
    FocusRing* m_ring;
};

} // namespace lumora
