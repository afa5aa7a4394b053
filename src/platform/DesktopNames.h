#pragma once

#include <QLatin1StringView>
#include <QString>

#include <initializer_list>

namespace lumora {

/// Whether `desktop` (as in XDG_CURRENT_DESKTOP, e.g. "ubuntu:GNOME") names one of those called
/// `names`, in whatever case.
bool namesDesktop(const QString& desktop, std::initializer_list<QLatin1StringView> names);

/// Whether `desktop` names a Wayland compositor that comes without a bar, to which people add one
/// that is mostly waybar.
bool namesBareCompositor(const QString& desktop);

} // namespace lumora
