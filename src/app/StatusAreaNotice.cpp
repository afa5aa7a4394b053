#include "app/StatusAreaNotice.h"

#include "platform/AppStorageBacked.h"
#include "platform/Clock.h"
#include "platform/NotificationCenter.h"
#include "platform/StatusItem.h"
#include "texts/NoStatusArea.h"

#include <tuple>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

StatusAreaNotice::StatusAreaNotice(Dependencies dependencies)
    : m_with(std::move(dependencies)) {}

void StatusAreaNotice::tell() {
    const auto& told = PreferenceKeys::toldOfNoStatusArea;
    if (m_with.item.unavailableReason().isEmpty() ||
        AppStorageBacked(m_with.preferences, told).wrappedValue())
        return;
    // Where it cannot be stored it holds for this run, and is told again in the next.
    std::ignore = storePreference(m_with.preferences, told, true);
    const NoStatusArea text = noStatusArea(m_with.desktop);
    m_with.notifications.add({
        .identifier = u"no-status-area"_s,
        .title = text.title,
        .body = text.body,
        .fireTime = m_with.clock.now(),
    });
}

} // namespace lumora
