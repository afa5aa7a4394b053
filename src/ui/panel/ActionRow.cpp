#include "ui/panel/ActionRow.h"

#include <utility>

namespace lumora {

ActionRow::ActionRow(const ThemeSource& themes, QWidget* parent)
    : RowButton(themes, padding, Highlight::OnHover, parent)
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

} // namespace lumora
