#pragma once

#include "texts/StatusReport.h"

namespace lumora {

/// For whom the status is written. Titles come from strangers, and bars disagree on what in a line
/// is markup.
enum class StatusFormat {
    Text,         ///< the label's text as it stands, for what takes nothing in it for markup
    Json,         ///< everything, for programs
    Waybar,       ///< a custom module with "return-type": "json"
    Polybar,      ///< a module of the type custom/script
    I3blocks,     ///< a block with markup=pango
    I3statusRust, ///< a block of the type custom
};

/// The format that is asked for by `name`, e.g. "i3blocks"; absent when there is none of it.
[[nodiscard]] std::optional<StatusFormat> statusFormat(const QString& name);

/// The names of all formats.
[[nodiscard]] QStringList statusFormatNames();

/// Whether lines of `format` tell more than the label: the tooltip, or all that there is.
[[nodiscard]] bool hasDetails(StatusFormat format);

/// What `format`'s readers are told of `report`: one line without a line break, of which no part
/// of a title is markup to them.
[[nodiscard]] QString statusLine(const StatusReport& report, StatusFormat format);

} // namespace lumora
