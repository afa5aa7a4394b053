#pragma once

#include "companion/parts/Parts.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <tl/expected.hpp>

#include <chrono>
#include <optional>
#include <vector>

namespace lumora::companion {

/// A category of an ActivityWatch server, and what belongs to it.
struct ActivityCategory {
    QStringList path; ///< "Work", "Writing"
    QString regex;    ///< empty: nothing of its own
    bool ignoresCase = false;
    std::optional<double> score; ///< how productive it is; absent: as the one above it

    bool operator==(const ActivityCategory&) const = default;
};

/// Reads the categories as the server's settings have them. The error is one line for people.
[[nodiscard]] tl::expected<std::vector<ActivityCategory>, QString>
categoriesIn(QByteArrayView json);

/// The body of the query for the time in each category while somebody was there.
[[nodiscard]] QByteArray activityQuery(
    const std::vector<ActivityCategory>& categories, std::chrono::sys_seconds from,
    std::chrono::sys_seconds until);

/// How long somebody was busy with a category.
struct ActivityTime {
    QStringList path;
    double seconds = 0;

    bool operator==(const ActivityTime&) const = default;
};

/// Reads the server's answer to the query.
[[nodiscard]] tl::expected<std::vector<ActivityTime>, QString> timesIn(QByteArrayView json);

/// The productive part of all times: those of the named categories, "Work > Writing", and of all
/// below them; where none is named, those with a positive score. No figure for no time at all.
[[nodiscard]] FocusPart focusFrom(
    const std::vector<ActivityTime>& times, const std::vector<ActivityCategory>& categories,
    const QStringList& productive);

} // namespace lumora::companion
