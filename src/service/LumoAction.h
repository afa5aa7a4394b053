#pragma once

#include <QMap>
#include <QString>

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

} // namespace lumora
