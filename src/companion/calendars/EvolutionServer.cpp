#include "companion/calendars/EvolutionServer.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDateTime>
#include <QTimeZone>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr int patience = 30'000; // milliseconds; the server may have to fetch first

const QString prefix = u"org.gnome.evolution.dataserver."_s;
const QString pathPrefix = u"/org/gnome/evolution/dataserver/"_s;

// As the server's query language takes it.
QString makeTime(qint64 seconds) {
    return u"(make-time \"%1\")"_s.arg(
        QDateTime::fromSecsSinceEpoch(seconds, QTimeZone::utc()).toString(u"yyyyMMdd'T'HHmmss'Z'"));
}

QString query(AskedSpan span) {
    return u"(occur-in-time-range? %1 %2)"_s.arg(makeTime(span.from), makeTime(span.to));
}

QByteArray calendarText(const QStringList& components) {
    QByteArray text = "BEGIN:VCALENDAR\r\n";
    for (const QString& component : components)
        text += component.trimmed().toUtf8() + "\r\n";
    return text + "END:VCALENDAR\r\n";
}

} // namespace

void EvolutionServer::call(
    const Place& place, const QString& method, const QVariantList& arguments,
    Then<QDBusMessage> then) {
    if (!m_bus.isConnected()) { // of which a call would never hear
        const auto answer = [then = std::move(then)] {
            then(tl::unexpected(u"There is no session bus"_s));
        };
        QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection);
        return;
    }
    QDBusMessage message =
        QDBusMessage::createMethodCall(place.service, place.path, place.interface, method);
    message.setArguments(arguments);
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, patience), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, then = std::move(then)] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (reply.type() == QDBusMessage::ReplyMessage)
            then(reply);
        else
            then(tl::unexpected(
                u"The desktop's calendars do not answer: "_s + reply.errorMessage()));
    });
}

void EvolutionServer::askNames(std::function<void(tl::expected<void, QString>)> then) {
    const QString bus = u"org.freedesktop.DBus"_s;
    const Place place{.service = bus, .path = u"/org/freedesktop/DBus"_s, .interface = bus};
    call(place, u"ListActivatableNames"_s, {}, [this, place, then](const auto& activatable) {
        if (!activatable)
            return then(tl::unexpected(activatable.error()));
        const QStringList startable = activatable->arguments().value(0).toStringList();
        call(place, u"ListNames"_s, {}, [this, startable, then](const auto& running) {
            if (!running)
                return then(tl::unexpected(running.error()));
            const QStringList all = startable + running->arguments().value(0).toStringList();
            m_sourcesName = newestName(all, prefix + u"Sources"_s);
            m_calendarName = newestName(all, prefix + u"Calendar"_s);
            if (m_sourcesName.isEmpty() || m_calendarName.isEmpty())
                return then(tl::unexpected(u"The Evolution Data Server is not installed"_s));
            then({});
        });
    });
}

void EvolutionServer::askCalendars(Then<std::vector<EvolutionCalendar>> then) {
    askNames([this, then = std::move(then)](const tl::expected<void, QString>& named) {
        if (!named)
            return then(tl::unexpected(named.error()));
        const Place manager{
            .service = m_sourcesName,
            .path = pathPrefix + u"SourceManager"_s,
            .interface = u"org.freedesktop.DBus.ObjectManager"_s};
        call(manager, u"GetManagedObjects"_s, {}, [then](const auto& answer) {
            if (!answer)
                return then(tl::unexpected(answer.error()));
            const QVariant objects = answer->arguments().value(0);
            if (!objects.canConvert<QDBusArgument>())
                return then(tl::unexpected(u"The desktop's calendars answer something else"_s));
            then(evolutionCalendars(objects.value<QDBusArgument>()));
        });
    });
}

void EvolutionServer::askEvents(const QString& uid, AskedSpan span, Then<QByteArray> then) {
    const Place factory{
        .service = m_calendarName,
        .path = pathPrefix + u"CalendarFactory"_s,
        .interface = prefix + u"CalendarFactory"_s};
    call(
        factory, u"OpenCalendar"_s, {uid},
        [this, span, then = std::move(then)](const auto& opened) {
            if (!opened)
                return then(tl::unexpected(opened.error()));
            const Place calendar{
                .service = opened->arguments().value(1).toString(),
                .path = opened->arguments().value(0).toString(),
                .interface = prefix + u"Calendar"_s};
            call(calendar, u"Open"_s, {}, [this, calendar, span, then](const auto& ready) {
                if (!ready)
                    return then(tl::unexpected(ready.error()));
                askObjects(calendar, span, then);
            });
        });
}

void EvolutionServer::askObjects(
    const Place& calendar, AskedSpan span, const Then<QByteArray>& then) {
    call(calendar, u"GetObjectList"_s, {query(span)}, [this, calendar, then](const auto& answer) {
        // Nobody needs it any longer, and it would stay for as long as this program.
        call(calendar, u"Close"_s, {}, [](const auto&) {});
        if (!answer)
            return then(tl::unexpected(answer.error()));
        then(calendarText(answer->arguments().value(0).toStringList()));
    });
}

} // namespace lumora::companion
