#pragma once

#include "companion/calendars/EvolutionCalendar.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <tl/expected.hpp>

#include <functional>

namespace lumora::companion {

/// Part of the line of time that events are asked for in, in seconds since 1970.
struct AskedSpan {
    qint64 from = 0;
    qint64 to = 0;
};

/// The Evolution Data Server over the bus. No call waits for it; answers come from the event loop,
/// and none once this object is gone. Errors are in words for people.
class EvolutionServer final : public QObject {
public:
    template <typename Value>
    using Then = std::function<void(tl::expected<Value, QString>)>;

    explicit EvolutionServer(QDBusConnection bus)
        : m_bus(std::move(bus)) {}

    /// The calendars of the user. Starts the server where it is installed and not running.
    void askCalendars(Then<std::vector<EvolutionCalendar>> then);

    /// The events of a calendar that touch `span`, as an iCalendar text: series with all that
    /// belongs to them, not repeated.
    void askEvents(const QString& uid, AskedSpan span, Then<QByteArray> then);

private:
    /// Where something is on the bus.
    struct Place {
        QString service;
        QString path;
        QString interface;
    };

    /// Calls a method; `then` gets what it answers, or why it does not.
    void call(
        const Place& place, const QString& method, const QVariantList& arguments,
        Then<QDBusMessage> then);
    void askNames(std::function<void(tl::expected<void, QString>)> then);
    void askObjects(const Place& calendar, AskedSpan span, const Then<QByteArray>& then);

    QDBusConnection m_bus;
    QString m_sourcesName;
    QString m_calendarName;
};

} // namespace lumora::companion
