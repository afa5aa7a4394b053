#pragma once

#include "texts/StatusReport.h"

#include <QObject>

namespace lumora {

class AppState;
class Preferences;
class StatusItem;
class Ticker;
struct StatusInputs;

/// Keeps the status item in step with the state, the ticker and the preferences. Everything must
/// outlive it.
class StatusItemController : public QObject {
    Q_OBJECT

public:
    StatusItemController(
        const AppState& state, const Ticker& ticker, const Preferences& preferences,
        StatusItem& item);

    /// What the status item shows now, and the state behind it.
    StatusReport report() const;

private:
    StatusInputs currentInputs() const;
    void render();

    const AppState& m_state;
    const Ticker& m_ticker;
    const Preferences& m_preferences;
    StatusItem& m_item;
};

} // namespace lumora
