#pragma once

#include "ui/rows/RowButton.h"
#include "ui/theme/PanelMetrics.h"
#include "ui/theme/SpinnerMotion.h"

namespace lumora {

/// A row that does something when it is clicked. While that is under way it shows a spinner before
/// its content and refuses further clicks.
class ActionRow : public RowButton {
    Q_OBJECT

public:
    /// Points between the row's ground and its content.
    static constexpr QMargins padding{PanelMetrics::rowReach, 3, PanelMetrics::rowReach, 3};

    /// `themes` must outlive the row.
    explicit ActionRow(const ThemeSource& themes, QWidget* parent = nullptr);

    /// What a click stands for: the id that is sent, and the action's key while in flight.
    void setAction(const QString& id, const QString& key);

    const QString& id() const { return m_id; }

    const QString& actionKey() const { return m_key; }

    /// Shows `row`, behind the spinner while pending.
    void setRow(RowContent row);

    bool isPending() const { return m_pending; }

    void setPending(bool pending);

private:
    void render();

    QString m_id;
    QString m_key;
    RowContent m_row;
    bool m_pending = false;
    SpinnerMotion m_spinner;
};

} // namespace lumora
