#pragma once

#include <QObject>
#include <QVariantMap>

namespace lumora {

class MeetingReminders;
class Preferences;
class UrlOpener;

/// Wires the desktop's notifications to the program: asks for permission at launch and opens a
/// meeting's link when its reminder is clicked. The collaborators must outlive it.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    AppDelegate(MeetingReminders& reminders, const Preferences& preferences, UrlOpener& urls);

    /// Asks for permission to notify. Does not wait for the answer.
    void applicationDidFinishLaunching();

    /// The user reacted to a notification, in whatever way: opens the address under "meetingUrl"
    /// in `userInfo`, if there is one that the user's `LinkPolicy` allows.
    void didReceive(const QVariantMap& userInfo, const QByteArray& activationToken);

private:
    MeetingReminders& m_reminders;
    const Preferences& m_preferences;
    UrlOpener& m_urls;
};

} // namespace lumora
