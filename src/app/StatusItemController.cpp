#include "app/StatusItemController.h"

#include "platform/AppStorageBacked.h"
#include "platform/LinkPolicy.h"
#include "platform/Preferences.h"
#include "state/AppState.h"
#include "state/Ticker.h"
#include "texts/StatusPresentation.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

StatusItemController::StatusItemController(
    const AppState& state, const Ticker& ticker, const Preferences& preferences, StatusItem& item)
    : m_state(state)
    , m_ticker(ticker)
    , m_preferences(preferences)
    , m_item(item) {
    connect(&m_state, &AppState::changed, this, &StatusItemController::render);
    connect(&m_ticker, &Ticker::ticked, this, &StatusItemController::render);
    connect(&m_preferences, &Preferences::changed, this, &StatusItemController::render);
    render();
}

StatusReport
StatusItemController::reportOf(const StatusInputs& inputs, const StatusItemContent& content) const {
    const auto mode =
        MenuBarLabel::mode(inputs.lastGood, inputs.state, inputs.now, inputs.menuBarAmbient);
    return {
        .mode = MenuBarLabel::modeName(mode),
        .symbol = content.symbol,
        .text = content.text,
        .tooltip = content.toolTipTitle + u'\n' + content.toolTipBody,
        .state = m_state.state().name(),
        .message = m_state.state().failureMessage(),
        .lastUpdated = m_state.lastUpdated(),
        .pending = QStringList(m_state.pending().cbegin(), m_state.pending().cend()),
        .actionError = m_state.actionError(),
    };
}

StatusInputs StatusItemController::currentInputs() const {
    return {
        .lastGood = m_state.lastGood(),
        .state = m_state.state(),
        .lastUpdated = m_state.lastUpdated(),
        .menuBarAmbient =
            AppStorageBacked(m_preferences, PreferenceKeys::menuBarAmbient).wrappedValue(),
        .links = linkPolicy(m_preferences),
        .now = m_ticker.now(),
    };
}

void StatusItemController::render() {
    const StatusInputs inputs = currentInputs();
    const StatusItemContent content = statusItemContent(inputs);
    m_item.show(content);
    const StatusReport before = std::exchange(m_report, reportOf(inputs, content));
    if (!m_report.hasSameLabel(before))
        Q_EMIT labelChanged();
    else if (m_report != before)
        Q_EMIT detailsChanged();
}

} // namespace lumora
