#pragma once

#include "briefing/Instant.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace lumora {

/// What the status item shows and the state behind it, for other programs.
struct StatusReport {
    QString mode;                   ///< name of the label's mode, e.g. "countdown", or "stopped"
    QString symbol;                 ///< symbol name
    std::optional<QString> text;    ///< the label's text
    QString tooltip;                ///< plain text, lines separated by "\n"
    QString state;                  ///< "idle", "loading", "loaded" or "failed"
    std::optional<QString> message; ///< why the last fetch failed
    std::optional<Instant> lastUpdated;
    QStringList pending; ///< keys of the actions in flight, sorted
    std::optional<QString> actionError;

    /// What there is to report while no program runs: an empty label.
    static StatusReport stopped();

    /// Whether `other` looks the same in the bar, whatever its tooltip says.
    [[nodiscard]] bool hasSameLabel(const StatusReport& other) const;

    /// One JSON object on one line, without a line break; absent values are null, instants are
    /// ISO 8601 in UTC. What a terminal might obey is escaped.
    QByteArray toJson() const;

    /// What `toJson` made `json` from; absent when it made none such. Members that are missing are
    /// absent or empty.
    static std::optional<StatusReport> fromJson(const QByteArray& json);

    bool operator==(const StatusReport&) const = default;
};

} // namespace lumora
