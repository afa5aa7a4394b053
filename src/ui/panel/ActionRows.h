#pragma once

#include "briefing/Briefing.h"
#include "ui/panel/KeyedRows.h"
#include "ui/rows/PaintedRow.h"
#include "ui/rows/RowButton.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/PanelMetrics.h"
#include "ui/theme/SpinnerMotion.h"

#include <set>

namespace lumora {

/// A row that does something when it is clicked. While that is under way it shows a spinner before
/// its content and refuses further clicks.
class ActionRow : public RowButton {
    Q_OBJECT

public:
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
    void turnSpinner();
    void render();

    QString m_id;
    QString m_key;
    RowContent m_row;
    bool m_pending = false;
    SpinnerMotion* m_spinner = nullptr; ///< null until first pending: most rows never are
};

/// What one clickable row shows and stands for.
struct ActionRowValue {
    QString id;  ///< sent with the action
    QString key; ///< of the action while it is in flight
    RowContent content;
    QString toolTip;
    QString accessibleName;
};

/// A column of clickable rows, one per habit or chore.
class ActionRows : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the rows.
    explicit ActionRows(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Shows one row per value; those whose key is in `pending` show a spinner. A last line tells
    /// how many there are `beyond` these.
    void render(
        const std::vector<ActionRowValue>& values, const std::set<QString>& pending,
        std::size_t beyond = 0);

Q_SIGNALS:
    /// A row that is not pending was clicked.
    void triggered(const QString& id, const QString& key);

private:
    const ThemeSource& m_themes;
    PaintedRow* m_more;
    QVBoxLayout* m_column;
    KeyedRows<ActionRow> m_rows;
};

/// The rows of the habits that are shown, in the briefing's order.
[[nodiscard]] std::vector<ActionRowValue> habitRows(const Habits& habits);

/// The rows of the chores that are shown, in the briefing's order.
[[nodiscard]] std::vector<ActionRowValue> choreRows(const Chores& chores);

} // namespace lumora
