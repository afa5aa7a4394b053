#pragma once

#include <QLatin1StringView>
#include <QString>

#include <initializer_list>

namespace lumora {

/// Whether `desktop` (as in XDG_CURRENT_DESKTOP, e.g. "ubuntu:GNOME") names one of those called
/// `names`, in whatever case.
bool namesDesktop(const QString& desktop, std::initializer_list<QLatin1StringView> names);

} // namespace lumora
