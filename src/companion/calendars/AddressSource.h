#pragma once

#include "companion/agenda/CalendarText.h"
#include "companion/calendars/CalendarSource.h"
#include "companion/calendars/KeptBody.h"
#include "companion/fetching/Web.h"

namespace lumora::companion {

/// How an address is read.
struct AddressReading {
    QString name;                 ///< the calendar's
    QUrl url;                     ///< see IcsAddress
    QString keptPath;             ///< see keptBodyPath()
    std::chrono::minutes refresh; ///< from one request to the next
    ReaderSettings reader;
};

/// A calendar that a server hands out. Asked anew only for what has changed; after a failure at
/// ever longer intervals, at first of a minute.
class AddressSource final : public CalendarSource {
public:
    /// Begins with what was kept. `web` outlives it.
    AddressSource(AddressReading reading, Web& web, Now now);

    void refreshDue() override;

    [[nodiscard]] bool isRefreshing() const override { return m_isAsking; }

private:
    void answered(const WebOutcome& outcome);
    void takeBody(const WebAnswer& answer);
    void goOnFailing(const QString& error);

    const AddressReading m_reading;
    Web& m_web;
    KeptBody m_kept;
    bool m_isAsking = false;
    int m_failures = 0;
    std::optional<std::chrono::sys_seconds> m_askedAt;
};

} // namespace lumora::companion
