#include "ui/panel/EventsBody.h"

#include "briefing/MeetingSelection.h"
#include "texts/PanelTexts.h"
#include "ui/panel/RowContents.h"
#include "ui/theme/PanelMetrics.h"

#include <algorithm>

namespace lumora {

namespace {

constexpr std::size_t mostRows = 10;
constexpr int eventsSpacing = 6;

} // namespace

EventsBody::EventsBody(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_none(new PaintedRow(themes, {}, this))
    , m_more(new PaintedRow(themes, {}, this))
    , m_column(new QVBoxLayout)
    , m_rows(*m_column) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(PanelMetrics::besideRows);
    layout->setSpacing(eventsSpacing);
    m_column->setSpacing(eventsSpacing);
    layout->addLayout(m_column);
    layout->addWidget(m_none);
    layout->addWidget(m_more);
}

void EventsBody::render(
    const Briefing& briefing, const std::vector<BriefEvent>& upcoming, Instant now) {
    const std::vector<BriefEvent> shown(
        upcoming.cbegin(), upcoming.cbegin() + qsizetype(std::min(upcoming.size(), mostRows)));
    const auto next = nextMeeting(briefing, now, backgroundThreshold);
    const auto make = [this] {
        auto* row = new EventRow(m_themes, this);
        connect(row, &EventRow::joinRequested, this, &EventsBody::joinRequested);
        return row;
    };
    const auto apply = [&](EventRow& row, const BriefEvent& event) {
        const QString time =
            PanelTexts::timeLabel(event, QTimeZone::systemTimeZone(), QLocale::system());
        row.render(event, time, next && next->id() == event.id());
    };
    m_rows.reconcile(shown, [](const BriefEvent& event) { return event.id(); }, make, apply);

    m_none->setVisible(shown.empty());
    m_none->setSpokenContent(calloutRow(PanelTexts::noEventsText(briefing)));
    const auto remaining = qsizetype(upcoming.size() - shown.size());
    m_more->setVisible(remaining > 0);
    m_more->setSpokenContent(captionRow(PanelTexts::moreEventsText(remaining)));
}

} // namespace lumora
