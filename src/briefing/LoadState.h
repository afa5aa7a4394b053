#pragma once

#include "briefing/Briefing.h"

#include <QString>

#include <optional>
#include <variant>

namespace lumora {

/// How far the latest fetch got.
class LoadState {
public:
    struct Idle {}; ///< nothing attempted yet

    struct Loading {}; ///< the first fetch is under way

    struct Loaded {
        double generatedAt; ///< the briefing's
    };

    struct Failed {
        QString message; ///< for the user, as it stands; may be empty
    };

    LoadState() = default; ///< idle

    static LoadState loading() { return LoadState(Loading{}); }

    static LoadState loaded(const Briefing& briefing) {
        return LoadState(Loaded{briefing.generatedAt});
    }

    static LoadState failed(QString message) { return LoadState(Failed{std::move(message)}); }

    bool isIdle() const { return std::holds_alternative<Idle>(m_value); }

    bool isLoading() const { return std::holds_alternative<Loading>(m_value); }

    bool isLoaded() const { return std::holds_alternative<Loaded>(m_value); }

    bool isFailed() const { return std::holds_alternative<Failed>(m_value); }

    /// The message of a failed state, which a server may have left empty; absent in every other
    /// state.
    std::optional<QString> failureMessage() const;

    /// "idle", "loading", "loaded" or "failed".
    QString name() const;

    /// Same case; equal messages for failures; equal `generatedAt` alone for loaded briefings, so
    /// that fetching an unchanged briefing again does not count as a change.
    bool operator==(const LoadState& other) const;

private:
    using Value = std::variant<Idle, Loading, Loaded, Failed>;

    explicit LoadState(Value value)
        : m_value(std::move(value)) {}

    Value m_value;
};

} // namespace lumora
