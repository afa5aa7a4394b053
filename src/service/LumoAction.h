#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

namespace lumora {

/// Something that the user asks the dashboard service to do. A value: it is what it sends.
class LumoAction {
public:
    using Body = QMap<QString, QString>;

    /// Logs the habit once more, or takes it back; the service decides which.
    static LumoAction habitToggle(const QString& id);
    /// Reports the chore as done.
    static LumoAction choreDone(const QString& id);
    /// Puts `text` into the inbox, as it stands.
    static LumoAction capture(const QString& text);
    /// Asks for new spending figures, which come later, or not at all when the service declines.
    static LumoAction spendingRefresh();

    /// The members of the JSON object that is sent; "type" says which action it is.
    const Body& body() const { return m_body; }

    bool operator==(const LumoAction&) const = default;

private:
    explicit LumoAction(Body body);

    Body m_body;
};

/// What the service replied to an action that it took. Every member is absent when the reply does
/// not have it.
struct ActionResult {
    std::optional<bool> ok;
    std::optional<bool> queued;    ///< false: the service declined for now
    std::optional<QString> reason; ///< why, for the user; cut at `longestPassage`

    bool operator==(const ActionResult&) const = default;
};

/// Reads the body of a successful reply. One that is no such object, or holds a member of another
/// type, says no more than that the action was taken: `ok` is true and the rest absent.
ActionResult decodeActionResult(const QByteArray& body);

} // namespace lumora
