#include "texts/MenuBarAmbient.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

QString rawValue(MenuBarAmbient ambient) {
    switch (ambient) {
    case MenuBarAmbient::Habits:
        return u"habits"_s;
    case MenuBarAmbient::Focus:
        return u"focus"_s;
    case MenuBarAmbient::Chores:
        return u"chores"_s;
    case MenuBarAmbient::None:
        return u"none"_s;
    }
    Q_UNREACHABLE();
}

MenuBarAmbient menuBarAmbientFromRaw(const QString& raw) {
    const auto found = std::ranges::find(menuBarAmbientCases, raw, rawValue);
    return found == menuBarAmbientCases.end() ? MenuBarAmbient::Habits : *found;
}

QString title(MenuBarAmbient ambient) {
    switch (ambient) {
    case MenuBarAmbient::Habits:
        return u"Habit progress"_s;
    case MenuBarAmbient::Focus:
        return u"Focus %"_s;
    case MenuBarAmbient::Chores:
        return u"Chores due"_s;
    case MenuBarAmbient::None:
        return u"Nothing"_s;
    }
    Q_UNREACHABLE();
}

} // namespace lumora
