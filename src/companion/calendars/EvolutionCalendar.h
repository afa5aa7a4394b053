#pragma once

#include <QDBusArgument>
#include <QString>

#include <optional>
#include <vector>

namespace lumora::companion {

/// A calendar of the Evolution Data Server.
struct EvolutionCalendar {
    QString uid;
    QString name;

    bool operator==(const EvolutionCalendar&) const = default;
};

/// The calendar that a source of the server's, called `uid`, is by its key file; absent when it is
/// none, or one that the user switched off or hides. Weather forecasts are none.
[[nodiscard]] std::optional<EvolutionCalendar>
evolutionCalendar(const QString& uid, const QString& keyFile);

/// The calendars among the objects that the source manager answers with, by their names.
[[nodiscard]] std::vector<EvolutionCalendar> evolutionCalendars(const QDBusArgument& objects);

/// Of the bus names that are `stem` and a number the one with the highest number: it changes from
/// release to release. Empty: there is none.
[[nodiscard]] QString newestName(const QStringList& names, const QString& stem);

} // namespace lumora::companion
