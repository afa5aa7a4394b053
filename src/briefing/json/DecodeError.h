#pragma once

#include <QString>

namespace lumora {

/// Why a JSON document could not be read.
struct DecodeError {
    /// Where the first fault is, e.g. "eventsToday[3].start"; empty when the document as a whole is
    /// at fault.
    QString path;
    QString description; ///< what is wrong there, e.g. "Bad date: 2025-03-04"

    /// Both in one line: "eventsToday[3].start: Bad date: 2025-03-04".
    QString text() const;

    bool operator==(const DecodeError&) const = default;
};

} // namespace lumora
