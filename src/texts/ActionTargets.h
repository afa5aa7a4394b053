#pragma once

#include "briefing/Briefing.h"

#include <QString>

#include <tl/expected.hpp>

namespace lumora {

/// Which habit of `briefing` somebody means who writes `idOrName`: the one with that id, else the
/// only one with that name, in whatever case. The value is its id; the error, a sentence for them,
/// says that there is none or that there are several.
[[nodiscard]] tl::expected<QString, QString>
habitMeantBy(const QString& idOrName, const Briefing& briefing);

/// The same for the chores that are due.
[[nodiscard]] tl::expected<QString, QString>
choreMeantBy(const QString& idOrName, const Briefing& briefing);

} // namespace lumora
