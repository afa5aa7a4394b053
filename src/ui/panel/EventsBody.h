#pragma once

#include "briefing/Briefing.h"
#include "platform/LinkPolicy.h"
#include "ui/panel/KeyedRows.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/PaintedRow.h"
#include "ui/rows/SpokenRole.h"

#include <QUrl>
#include <QWidget>

namespace lumora {

class RowButton;

/// One of today's events. Only its join button can be pressed.
class EventRow : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the row.
    explicit EventRow(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Shows `event`; `isNext` marks the next meeting. The join button is there where `links`
    /// allows the event's.
    void
    render(const BriefEvent& event, const TimeCell& time, bool isNext, const LinkPolicy& links);

    PaintedRow* texts() const { return m_texts; }

    RowButton* joinButton() const { return m_join; }

Q_SIGNALS:
    void joinRequested(const QUrl& url);

private:
    PaintedRow* m_texts;
    RowButton* m_join;
    QUrl m_url;
};

/// The rows of today's upcoming events, or a sentence that there are none.
class EventsBody : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the body.
    explicit EventsBody(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Shows what of `briefing` is upcoming at `now`, with the links that may be opened.
    void render(
        const Briefing& briefing, const std::vector<BriefEvent>& upcoming, Instant now,
        const LinkPolicy& links);

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
