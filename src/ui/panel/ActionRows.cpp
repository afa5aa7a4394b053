#include "ui/panel/ActionRows.h"

#include "briefing/ActionKeys.h"
#include "texts/PanelTexts.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/WidgetTexts.h"

#include <utility>

namespace lumora {

ActionRow::ActionRow(const ThemeSource& themes, QWidget* parent)
    : RowButton(themes, PanelMetrics::clickableRow, parent) {}

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
    turnSpinner();
    render();
}

void ActionRow::turnSpinner() {
    if (!m_spinner) {
        m_spinner = new SpinnerMotion(themes(), this);
        connect(m_spinner, &QVariantAnimation::valueChanged, this, &ActionRow::render);
    }
    m_spinner->setRunning(m_pending);
}

void ActionRow::render() {
    RowContent shown = m_row;
    if (m_pending)
        shown.items.insert(shown.items.begin(), RowItem::spinner(m_spinner->rotation()));
    setContent(std::move(shown));
}

ActionRows::ActionRows(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_more(new PaintedRow(themes, PanelMetrics::clickableRow, this))
    , m_column(new QVBoxLayout)
    , m_rows(*m_column) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addLayout(m_column);
    layout->addWidget(m_more);
}

void ActionRows::render(
    const std::vector<ActionRowValue>& values, const std::set<QString>& pending,
    std::size_t beyond) {
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
    m_more->setVisible(beyond > 0);
    m_more->setSpokenContent(captionRow(PanelTexts::moreText(qsizetype(beyond))));
}

std::vector<ActionRowValue> habitRows(const Habits& habits) {
    std::vector<ActionRowValue> rows;
    const auto shown = shownInSection(habits.items);
    rows.reserve(shown.size());
    for (const Habit& habit : shown)
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
    const auto shown = shownInSection(chores.top);
    rows.reserve(shown.size());
    for (const Chore& chore : shown)
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
