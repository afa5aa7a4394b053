#pragma once

#include "service/LumoAction.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <functional>
#include <optional>

namespace lumora {

class AppState;
class Preferences;
class Ticker;
class UrlOpener;

/// What other programs of the user's may have done with the day, by the state that the panel goes
/// by too: they can do what the panel could, to what it shows, and hear what it shows, but for
/// links and amounts. Everything must outlive it.
class RemoteActions {
public:
    /// Called once, with the failure's message; absent on success.
    using Done = std::function<void(std::optional<QString> failure)>;

    struct Dependencies {
        AppState& state;
        const Ticker& ticker;
        const Preferences& preferences;
        UrlOpener& urls;
    };

    explicit RemoteActions(const Dependencies& dependencies)
        : m_with(dependencies) {}

    /// Opens the link of the meeting that is on or comes next. The token is empty where the caller
    /// had none.
    void join(const QByteArray& activationToken, const Done& done);

    /// Puts `text` into the inbox.
    void capture(const QString& text, const Done& done);

    /// Toggles a habit, or reports a chore as done, that the briefing has, by its id or its name.
    void toggleHabit(const QString& idOrName, const Done& done);
    void finishChore(const QString& idOrName, const Done& done);

    /// What is left of the day as JSON, see `Agenda`; or why there is nothing to tell.
    [[nodiscard]] tl::expected<QString, QString> agenda() const;

private:
    [[nodiscard]] QString reasonForNoBriefing() const;
    void perform(const LumoAction& action, const QString& key, const Done& done);
    [[nodiscard]] std::function<void(bool)> tell(const Done& done) const;

    Dependencies m_with;
};

} // namespace lumora
