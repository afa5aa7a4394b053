#pragma once

#include "briefing/LoadState.h"
#include "ui/panel/ErrorBanner.h"
#include "ui/rows/PaintedRow.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/SpinnerMotion.h"

namespace lumora {

/// What stands in the panel while no briefing has ever arrived.
class PanelPlaceholder : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the placeholder.
    explicit PanelPlaceholder(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Shows that loading is under way, or why it failed; with a hint when the configuration is
    /// not complete.
    void render(const LoadState& state, bool isConfigured);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void renderLoading();

    PaintedRow* m_loading;
    ErrorBanner* m_banner;
    PaintedRow* m_hint;
    SpinnerMotion m_spinner;
};

} // namespace lumora
