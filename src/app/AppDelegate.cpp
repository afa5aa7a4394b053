#include "app/AppDelegate.h"

#include "platform/Spawn.h"
#include "platform/UrlOpener.h"
#include "reminders/MeetingReminders.h"
#include "reminders/ReminderPlan.h"

namespace lumora {

AppDelegate::AppDelegate(MeetingReminders& reminders, UrlOpener& urls)
    : m_reminders(reminders)
    , m_urls(urls) {}

void AppDelegate::applicationDidFinishLaunching() {
    spawn(m_reminders.requestAuthorization());
}

void AppDelegate::didReceive(const QVariantMap& userInfo, const QByteArray& activationToken) {
    const QVariant address = userInfo.value(meetingUrlKey);
    if (address.typeId() != QMetaType::QString)
        return;
    if (const auto url = safeLink(address.toString()))
        m_urls.open(*url, activationToken);
}

} // namespace lumora
