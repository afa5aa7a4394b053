#pragma once

#include "briefing/Briefing.h"
#include "ui/panel/KeyedRows.h"
#include "ui/rows/PaintedRow.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/SpinnerMotion.h"

namespace lumora {

class RowButton;

/// The revealed amounts: the month's figure, its pace, the largest buckets.
class SpendingFigures : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the figures.
    explicit SpendingFigures(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Shows `spending`; while `refreshing`, the refresh button turns and cannot be pressed.
    void render(const Spending& spending, bool refreshing);

    RowButton* refreshButton() const { return m_refresh; }

    RowButton* hideButton() const { return m_hide; }

Q_SIGNALS:
    void hideRequested();
    void refreshRequested();

private:
    void showRefreshing(bool refreshing);
    void renderRefresh();

    const ThemeSource& m_themes;
    PaintedRow* m_total;
    RowButton* m_refresh;
    RowButton* m_hide;
    PaintedRow* m_pace;
    PaintedRow* m_more;
    PaintedRow* m_asOf;
    QVBoxLayout* m_column;
    KeyedRows<PaintedRow> m_buckets;
    SpinnerMotion m_spinner;
    bool m_refreshing = false;
};

} // namespace lumora
