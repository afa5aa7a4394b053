#pragma once

#include "ui/rows/SpokenRole.h"
#include "ui/theme/ThemeSource.h"

#include <QWidget>

namespace lumora {

class RowButton;

/// The controls at the bottom of the panel.
class PanelFooter : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the footer.
    explicit PanelFooter(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Whether there is a dashboard to open.
    void setDashboardAvailable(bool available);

Q_SIGNALS:
    void refreshRequested();
    void dashboardRequested();
    void settingsRequested();
    void quitRequested();

private:
    RowButton* m_dashboard;
};

} // namespace lumora
