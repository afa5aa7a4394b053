#pragma once

#include "companion/settings/ServiceSettings.h"

#include <QByteArray>

namespace lumora::companion {

/// What a first configuration is made of.
struct NewSettings {
    QByteArray token;
    quint16 port = ServiceSettings().port;
    std::vector<CalendarSettings> calendars; ///< paths are absolute
    QStringList habits;                      ///< their names
    std::vector<ChoreSettings> chores;       ///< without ids and rooms
    QString inbox;                           ///< the file for thoughts; empty: none
    QString journal;                         ///< the hledger journal; empty: none
};

/// The text of a first configuration, with comments that show how to go on. readSettings() takes
/// it, and finds in it what was given.
[[nodiscard]] QByteArray newSettingsText(const NewSettings& settings);

/// An id for something called `name`: "drink-water" for "Drink water". One that is in `taken`
/// already gets a number.
[[nodiscard]] QString idFor(const QString& name, const QStringList& taken);

/// 32 random bytes in letters and digits that an address may hold.
[[nodiscard]] QByteArray newToken();

} // namespace lumora::companion
