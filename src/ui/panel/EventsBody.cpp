#include "ui/panel/EventsBody.h"

#include "briefing/MeetingSelection.h"
#include "texts/PanelTexts.h"
#include "texts/StatusPresentation.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/RowButton.h"
#include "ui/rows/WidgetTexts.h"
#include "ui/theme/PanelMetrics.h"

#include <QHBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr std::size_t maximumRows = 10;
constexpr int eventsSpacing = 6;
constexpr int eventSpacing = 8;

} // namespace

EventRow::EventRow(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_texts(new PaintedRow(themes, {}, this))
    , m_join(new RowButton(themes, {}, RowButton::Highlight::None, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(eventSpacing);
    layout->addWidget(m_texts, 1);
    layout->addWidget(m_join, 0, Qt::AlignTop);
    connect(m_join, &QAbstractButton::clicked, this, [this] { Q_EMIT joinRequested(m_url); });
}

void EventRow::render(const BriefEvent& event, const QString& timeLabel, bool isNext) {
    m_texts->setContent(eventRow(event, timeLabel, isNext));
    setSpokenName(*m_texts, PanelTexts::eventAccessibleName(event, timeLabel));

    const auto url = joinUrl(event);
    m_url = url.value_or(QUrl());
    m_join->setVisible(url.has_value());
    const ColorRole tint = isNext ? ColorRole::Accent : ColorRole::Secondary;
    m_join->setContent({.items = {RowItem::makeSymbol(u"video.fill"_s, {.color = tint})}});
    const QString join = u"Join "_s + event.title;
    setToolTipText(*m_join, join);
    setSpokenName(*m_join, join);
}

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
        upcoming.cbegin(), upcoming.cbegin() + qsizetype(std::min(upcoming.size(), maximumRows)));
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
