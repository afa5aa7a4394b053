#pragma once

#include "companion/agenda/CalendarTime.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

namespace lumora::companion {

/// How long an event lasts.
struct EventLength {
    qint64 local = 0; ///< seconds as clocks show them: a day is one, whatever clocks do in it
    qint64 exact = 0; ///< seconds after those
};

/// A date on which an event takes place beside those of its rule.
struct ExtraStart {
    CalendarTime start;
    std::optional<EventLength> length; ///< absent: as long as the event
};

/// One VEVENT, as far as agendas are made from it.
struct EventRecord {
    QByteArray uid; ///< may be empty: an event of its own
    int sequence = 0;
    QString title;
    std::optional<QString> location;
    std::optional<QUrl> meetingUrl;
    bool isCancelled = false;
    bool isDeclined = false;    ///< by the user
    bool isTransparent = false; ///< takes up nobody's time

    CalendarTime start;
    EventLength length;
    QByteArrayList rules;
    QByteArrayList exceptRules;
    std::vector<ExtraStart> extras;
    std::vector<CalendarTime> exceptions;
    std::optional<CalendarTime> replaces; ///< the date of a series in whose place this one is
    bool replacesFollowing = false;       ///< and so it is with all dates behind that one
};

} // namespace lumora::companion
