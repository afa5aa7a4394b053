#include "companion/calendars/CalendarSource.h"

#include <algorithm>

namespace lumora::companion {

namespace {

// After a login it is not there at once, which is no news to anybody.
constexpr std::chrono::minutes startOfNetwork{10};

} // namespace

void CalendarSource::take(std::vector<NamedEvents> content) {
    m_content = std::move(content);
    confirm();
}

void CalendarSource::takeOld(std::vector<NamedEvents> content, std::chrono::sys_seconds readAt) {
    m_content = std::move(content);
    m_isOld = true;
    m_readAt = readAt;
}

void CalendarSource::confirm() {
    m_isOld = false;
    m_readAt = now();
    m_error.reset();
    m_failingSince.reset();
    Q_EMIT changed();
}

void CalendarSource::complain(const QString& error) {
    if (m_error != error) {
        m_error = error;
        Q_EMIT changed();
    }
}

void CalendarSource::fail(const QString& error) {
    if (!m_failingSince)
        m_failingSince = now();
    if (m_isOld && now() - *m_failingSince >= startOfNetwork)
        m_failingSince = std::min(*m_failingSince, *m_readAt);
    complain(error);
}

} // namespace lumora::companion
