#pragma once

#include "texts/StatusReport.h"

#include <QObject>

namespace lumora {

class AppState;
class Preferences;
class StatusItem;
class Ticker;
struct StatusInputs;
struct StatusItemContent;

/// Keeps the status item in step with the state, the ticker and the preferences. Everything must
/// outlive it.
class StatusItemController : public QObject {
    Q_OBJECT

public:
    StatusItemController(
        const AppState& state, const Ticker& ticker, const Preferences& preferences,
        StatusItem& item);

    /// What the status item shows now, and the state behind it.
    const StatusReport& report() const { return m_report; }

Q_SIGNALS:
    /// The report now has another label, or one of another state.
    void labelChanged();

    /// The rest of the report has changed, such as the tooltip, and the label has not.
    void detailsChanged();

private:
    StatusInputs currentInputs() const;
    StatusReport reportOf(const StatusInputs& inputs, const StatusItemContent& content) const;
    void render();

    const AppState& m_state;
    const Ticker& m_ticker;
    const Preferences& m_preferences;
    StatusItem& m_item;
    StatusReport m_report;
};

} // namespace lumora
