#include "app/StatusItemController.h"

#include "platform/AppStorageBacked.h"
#include "platform/LinkPolicy.h"
#include "platform/Preferences.h"
#include "state/AppState.h"
#include "state/Ticker.h"
#include "texts/StatusPresentation.h"

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

StatusReport StatusItemController::report() const {
    const StatusInputs inputs = currentInputs();
    const StatusItemContent content = statusItemContent(inputs);
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
    m_item.show(statusItemContent(currentInputs()));
}

} // namespace lumora
