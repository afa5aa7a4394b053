#pragma once

#include "companion/agenda/CalendarText.h"
#include "companion/calendars/CalendarSource.h"
#include "companion/calendars/EvolutionServer.h"

namespace lumora::companion {

/// All calendars that GNOME shows, those of its online accounts among them, each under its own
/// name. Asked for some days at a time.
class GnomeSource final : public CalendarSource {
public:
    GnomeSource(QDBusConnection bus, std::chrono::minutes refresh, ReaderSettings reader, Now now);

    void refreshDue() override;

    [[nodiscard]] bool isRefreshing() const override { return m_isAsking; }

private:
    void askNext();
    void finish();
    void giveUp(const QString& error);

    EvolutionServer m_server;
    const std::chrono::minutes m_refresh;
    const ReaderSettings m_reader;
    bool m_isAsking = false;
    std::optional<std::chrono::sys_seconds> m_askedAt;
    std::vector<EvolutionCalendar> m_calendars; ///< of the present round
    std::vector<NamedEvents> m_read;            ///< of those, what has been read
    std::optional<QString> m_loss;              ///< why one of them could not be
    std::size_t m_next = 0;
};

} // namespace lumora::companion
