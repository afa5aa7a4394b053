#include "platform/DesktopNames.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

bool namesDesktop(const QString& desktop, std::initializer_list<QLatin1StringView> names) {
    const QStringList named = desktop.split(u':');
    return std::ranges::any_of(
        names, [&](QLatin1StringView name) { return named.contains(name, Qt::CaseInsensitive); });
}

bool namesBareCompositor(const QString& desktop) {
    // The last is what compositors of that library say beside their own names.
    return namesDesktop(
        desktop,
        {"sway"_L1, "Hyprland"_L1, "river"_L1, "niri"_L1, "labwc"_L1, "Wayfire"_L1, "wlroots"_L1});
}

} // namespace lumora
