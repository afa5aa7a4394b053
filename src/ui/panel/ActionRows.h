#pragma once

#include "briefing/Briefing.h"
#include "ui/panel/ActionRow.h"
#include "ui/panel/KeyedRows.h"
#include "ui/rows/SpokenRole.h"

#include <set>

namespace lumora {

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

    /// Shows one row per value; those whose key is in `pending` show a spinner.
    void render(const std::vector<ActionRowValue>& values, const std::set<QString>& pending);

Q_SIGNALS:
    /// A row that is not pending was clicked.
    void triggered(const QString& id, const QString& key);

private:
    const ThemeSource& m_themes;
    KeyedRows<ActionRow> m_rows;
};

/// The rows of the habits, in the briefing's order.
std::vector<ActionRowValue> habitRows(const Habits& habits);

/// The rows of the chores, in the briefing's order.
std::vector<ActionRowValue> choreRows(const Chores& chores);

} // namespace lumora
