#pragma once

#include "companion/agenda/EventRecord.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <optional>

namespace lumora::companion {

/// Tells the time: the wall clock's, or a test's.
using Now = std::function<std::chrono::sys_seconds()>;

/// The events of one calendar, under the name that they are shown with.
struct NamedEvents {
    QString name;
    std::vector<EventRecord> events;
};

/// Where events come from: one calendar of the configuration. What was read last stays until
/// something better comes.
class CalendarSource : public QObject {
    Q_OBJECT

public:
    explicit CalendarSource(Now now)
        : m_now(std::move(now)) {}

    /// Begins to read anew what is due for it.
    virtual void refreshDue() = 0;

    /// Whether something is under way.
    [[nodiscard]] virtual bool isRefreshing() const { return false; }

    [[nodiscard]] const std::vector<NamedEvents>& content() const { return m_content; }

    /// When the content was last known to be what the place holds; absent: never yet.
    [[nodiscard]] std::optional<std::chrono::sys_seconds> readAt() const { return m_readAt; }

    /// Why it is not, in words for people; absent: it is.
    [[nodiscard]] const std::optional<QString>& error() const { return m_error; }

    /// Since when each attempt has failed; absent: the last one did not. Content of before this
    /// start counts from when it was read, unless the network has only just begun to fail.
    [[nodiscard]] std::optional<std::chrono::sys_seconds> failingSince() const {
        return m_failingSince;
    }

Q_SIGNALS:
    /// Anything of the above is another than before.
    void changed();

protected:
    [[nodiscard]] std::chrono::sys_seconds now() const { return m_now(); }

    /// The place holds this.
    void take(std::vector<NamedEvents> content);

    /// The same as was the content at `readAt`, and maybe no longer.
    void takeOld(std::vector<NamedEvents> content, std::chrono::sys_seconds readAt);

    /// The place holds what it held.
    void confirm();

    /// Some of it could not be read, for a reason in words; the rest has been taken.
    void complain(const QString& error);

    /// It could not be read, for a reason in words that hold no address.
    void fail(const QString& error);

private:
    Now m_now;
    std::vector<NamedEvents> m_content;
    bool m_isOld = false; ///< the content is of before this start
    std::optional<std::chrono::sys_seconds> m_readAt;
    std::optional<QString> m_error;
    std::optional<std::chrono::sys_seconds> m_failingSince;
};

} // namespace lumora::companion
