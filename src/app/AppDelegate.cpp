#include "app/AppDelegate.h"

#include "platform/LinkPolicy.h"
#include "platform/Spawn.h"
#include "platform/UrlOpener.h"
#include "reminders/MeetingReminders.h"
#include "reminders/ReminderPlan.h"

namespace lumora {

AppDelegate::AppDelegate(
    MeetingReminders& reminders, const Preferences& preferences, UrlOpener& urls)
    : m_reminders(reminders)
    , m_preferences(preferences)
    , m_urls(urls) {}

void AppDelegate::applicationDidFinishLaunching() {
    spawn(m_reminders.requestAuthorization());
}

void AppDelegate::didReceive(const QVariantMap& userInfo, const QByteArray& activationToken) {
    const QVariant address = userInfo.value(meetingUrlKey);
    if (address.typeId() != QMetaType::QString)
        return;
    if (const auto url = linkPolicy(m_preferences).link(address.toString()))
        m_urls.open(*url, activationToken);
}

} // namespace lumora
