#pragma once

#include <QByteArray>
#include <QHash>

#include <functional>
#include <optional>
#include <vector>

namespace lumora {

/// Environment variables by name; absent ones are not in it.
using Environment = QHash<QByteArray, QByteArray>;

/// What the toolkit is to find in the environment while it starts, where that differs.
///
/// X11 (or XWayland) is preferred wherever there is a display, because there the panel can be
/// placed beside the status area; but for Wayland compositors with a layer for that, which
/// `hasPanelLayer` knows. It is asked where that matters only. The GTK platform theme is never
/// loaded: it triples the memory and the start-up time for nothing that the program shows.
Environment startupOverrides(
    const Environment& environment,
    const std::function<bool()>& hasPanelLayer = [] { return false; });

/// Applies the overrides for as long as it lives, so that programs started later see the
/// environment as the user has it.
class StartupEnvironment {
public:
    StartupEnvironment();
    ~StartupEnvironment();
    StartupEnvironment(const StartupEnvironment&) = delete;
    StartupEnvironment& operator=(const StartupEnvironment&) = delete;

private:
    struct Saved {
        QByteArray name;
        std::optional<QByteArray> value;
    };

    std::vector<Saved> m_saved;
};

} // namespace lumora
