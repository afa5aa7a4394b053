#include "platform/linux/LogindWakeMonitor.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

LogindWakeMonitor::LogindWakeMonitor(QDBusConnection bus) {
    // The service is named so that no other program on the bus can fake a wake.
    bus.connect(
        u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
        u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s, this,
        SLOT(prepareForSleep(bool)));
}

void LogindWakeMonitor::prepareForSleep(bool goingToSleep) {
    if (!goingToSleep)
        Q_EMIT woke();
}

} // namespace lumora
