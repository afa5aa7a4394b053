#pragma once

#include "briefing/LoadState.h"

#include <optional>
#include <set>

namespace lumora {

/// What the panel is rendered from: the application's state at one moment.
struct PanelValues {
    const LoadState& state;
    const std::optional<Briefing>& lastGood;
    std::optional<Instant> lastUpdated; ///< when `lastGood` was stored
    const std::set<QString>& pending;   ///< keys of the actions in flight
    const std::optional<QString>& actionError;
    bool isConfigured = true; ///< there is an endpoint and a token
    bool hasDashboard = false;
    Instant now; ///< the time that the rows are laid out for
};

} // namespace lumora
