#include "companion/calendars/CalendarSource.h"

namespace lumora::companion {

void CalendarSource::take(std::vector<NamedEvents> content) {
    m_content = std::move(content);
    confirm();
}

void CalendarSource::takeOld(std::vector<NamedEvents> content, std::chrono::sys_seconds readAt) {
    m_content = std::move(content);
    m_readAt = readAt;
}

void CalendarSource::confirm() {
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
    complain(error);
}

} // namespace lumora::companion
