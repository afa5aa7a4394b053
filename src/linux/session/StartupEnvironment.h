#pragma once

#include <QByteArray>
#include <QHash>

#include <optional>
#include <vector>

namespace lumora {

/// Environment variables by name; absent ones are not in it.
using Environment = QHash<QByteArray, QByteArray>;

/// What the toolkit is to find in the environment while it starts, where that differs.
///
/// X11 (or XWayland) is preferred wherever there is a display, because only there can the panel be
/// placed beside the status area. The GTK platform theme is never loaded: it triples the memory
/// and the start-up time for nothing that the program shows.
Environment startupOverrides(const Environment& environment);

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
