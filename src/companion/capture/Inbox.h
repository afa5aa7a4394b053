#pragma once

#include "companion/fetching/Commands.h"
#include "companion/settings/ServiceSettings.h"

#include <QDate>

#include <tl/expected.hpp>

#include <chrono>
#include <functional>
#include <optional>

namespace lumora::companion {

/// Where thoughts go: to the end of a file, or to a command's standard input.
class Inbox {
public:
    /// Nothing, or why the thought was not taken, in one line for people.
    using Outcome = tl::expected<void, QString>;

    /// `commands` must outlive this.
    Inbox(CaptureSettings settings, Commands& commands);

    /// Whether there is any place for thoughts.
    [[nodiscard]] bool isThere() const;

    /// Keeps a thought and calls `done` once, perhaps from within the call. The same thought within
    /// two seconds is one whose answer got lost, and not kept again. `day` is the user's.
    void keep(
        const QString& text, std::chrono::sys_seconds now, QDate day,
        std::function<void(Outcome)> done);

private:
    struct Kept {
        QString thought;
        std::chrono::sys_seconds at;
    };

    const CaptureSettings m_settings;
    Commands& m_commands;
    std::optional<Kept> m_last; ///< the last one that was taken, or is on its way
};

} // namespace lumora::companion
