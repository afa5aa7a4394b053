#pragma once

#include "ui/panel/EventRow.h"
#include "ui/panel/KeyedRows.h"
#include "ui/rows/SpokenRole.h"

namespace lumora {

/// The rows of today's upcoming events, or a sentence that there are none.
class EventsBody : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the body.
    explicit EventsBody(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Shows what of `briefing` is upcoming at `now`.
    void render(const Briefing& briefing, const std::vector<BriefEvent>& upcoming, Instant now);

Q_SIGNALS:
    void joinRequested(const QUrl& url);

private:
    const ThemeSource& m_themes;
    PaintedRow* m_none;
    PaintedRow* m_more;
    QVBoxLayout* m_column;
    KeyedRows<EventRow> m_rows;
};

} // namespace lumora
