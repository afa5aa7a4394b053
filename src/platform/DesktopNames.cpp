#include "platform/DesktopNames.h"

#include <QStringList>

#include <algorithm>

namespace lumora {

bool namesDesktop(const QString& desktop, std::initializer_list<QLatin1StringView> names) {
    const QStringList named = desktop.split(u':');
    return std::ranges::any_of(
        names, [&](QLatin1StringView name) { return named.contains(name, Qt::CaseInsensitive); });
}

} // namespace lumora
