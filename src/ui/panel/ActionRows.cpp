#include "ui/panel/ActionRows.h"

#include "briefing/ActionKeys.h"
#include "texts/PanelTexts.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/WidgetTexts.h"

#include <utility>

namespace lumora {

ActionRow::ActionRow(const ThemeSource& themes, QWidget* parent)
    : RowButton(themes, PanelMetrics::clickableRow, parent)
    , m_spinner(themes, this) {
    connect(&m_spinner, &QVariantAnimation::valueChanged, this, &ActionRow::render);
}

void ActionRow::setAction(const QString& id, const QString& key) {
    m_id = id;
    m_key = key;
}

void ActionRow::setRow(RowContent row) {
    m_row = std::move(row);
    render();
}

void ActionRow::setPending(bool pending) {
    if (m_pending == pending)
        return;
    m_pending = pending;
    // A disabled row would lose the keyboard focus, so a pending one only stops listening.
    setBusy(pending);
    m_spinner.setRunning(pending);
    render();
}

void ActionRow::render() {
    RowContent shown = m_row;
    if (m_pending)
        shown.items.insert(shown.items.begin(), RowItem::spinner(m_spinner.rotation()));
    setContent(std::move(shown));
}

ActionRows::ActionRows(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_rows(*new QVBoxLayout(this)) {
    layout()->setContentsMargins({});
    layout()->setSpacing(0);
}

void ActionRows::render(
    const std::vector<ActionRowValue>& values, const std::set<QString>& pending) {
    const auto make = [this] {
        auto* row = new ActionRow(m_themes, this);
        connect(row, &QAbstractButton::clicked, this, [this, row] {
            if (!row->isPending())
                Q_EMIT triggered(row->id(), row->actionKey());
        });
        return row;
    };
    const auto apply = [&](ActionRow& row, const ActionRowValue& value) {
        row.setAction(value.id, value.key);
        row.setRow(value.content);
        setToolTipText(row, value.toolTip);
        setSpokenName(row, value.accessibleName);
        row.setPending(pending.contains(value.key));
    };
    m_rows.reconcile(values, [](const ActionRowValue& value) { return value.id; }, make, apply);
}

std::vector<ActionRowValue> habitRows(const Habits& habits) {
    std::vector<ActionRowValue> rows;
    rows.reserve(habits.items.size());
    for (const Habit& habit : habits.items)
        rows.push_back({
            .id = habit.id,
            .key = ActionKeys::habit(habit.id),
            .content = habitRow(habit),
            .toolTip = PanelTexts::habitToolTip(habit),
            .accessibleName = PanelTexts::habitAccessibleName(habit),
        });
    return rows;
}

std::vector<ActionRowValue> choreRows(const Chores& chores) {
    std::vector<ActionRowValue> rows;
    rows.reserve(chores.top.size());
    for (const Chore& chore : chores.top)
        rows.push_back({
            .id = chore.id,
            .key = ActionKeys::chore(chore.id),
            .content = choreRow(chore),
            .toolTip = PanelTexts::choreToolTip(chore),
            .accessibleName = PanelTexts::choreAccessibleName(chore),
        });
    return rows;
}

} // namespace lumora
