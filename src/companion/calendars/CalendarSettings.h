#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <chrono>
#include <variant>
#include <vector>

namespace lumora::companion {

/// A calendar that a server hands out as one iCalendar text, at an address that may be a secret.
struct IcsAddress {
    QUrl url; ///< https or webcal; http only to this very computer

    bool operator==(const IcsAddress&) const = default;
};

/// A calendar in one .ics file.
struct IcsFile {
    QString path;

    bool operator==(const IcsFile&) const = default;
};

/// A folder of .ics files, one event each as a rule: what vdirsyncer, khal and Radicale keep.
struct IcsFolder {
    QString path;

    bool operator==(const IcsFolder&) const = default;
};

/// The calendars of GNOME and its online accounts, from the Evolution Data Server.
struct GnomeCalendars {
    bool operator==(const GnomeCalendars&) const = default;
};

using CalendarPlace = std::variant<IcsAddress, IcsFile, IcsFolder, GnomeCalendars>;

/// One calendar of the configuration.
struct CalendarSettings {
    QString name; ///< for people; of GNOME's calendars each goes by its own name
    CalendarPlace place;
    /// Whether to show events with a time that do not take up their owner's time.
    bool showTransparent = false;

    bool operator==(const CalendarSettings&) const = default;
};

/// All that the configuration says about calendars.
struct AgendaSettings {
    std::vector<CalendarSettings> calendars;
    QStringList myAddresses;  ///< e-mail addresses, to know which meetings their owner declined
    QStringList meetingHosts; ///< where meetings are joined, beside those that everybody knows
    std::chrono::minutes refresh{15}; ///< between two requests to an address
    QString cacheFolder; ///< where bodies from addresses are kept; made where it is missing

    bool operator==(const AgendaSettings&) const = default;
};

} // namespace lumora::companion
