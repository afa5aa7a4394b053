#include "ui/panel/EventsBody.h"

#include "briefing/MeetingSelection.h"
#include "briefing/TextBounds.h"
#include "texts/PanelTexts.h"
#include "texts/StatusPresentation.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/RowButton.h"
#include "ui/rows/WidgetTexts.h"
#include "ui/theme/PanelMetrics.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr std::size_t maximumRows = 10;
constexpr int eventsSpacing = 6;
constexpr int eventSpacing = 8;

// The join button's reach is a part of the gap before it, and of the one to the panel's edge.
constexpr QMargins joinPadding{3, 0, 3, 0};
constexpr QMargins bodyMargins{
    PanelMetrics::rowReach, 0, PanelMetrics::rowReach - joinPadding.right(), 0};
constexpr QMargins textsPadding{0, 0, joinPadding.right(), 0};
constexpr int joinGap = eventSpacing - joinPadding.right() - joinPadding.left();

/// Tells rows apart, and costs the same however long the title is.
QString rowKey(const BriefEvent& event) {
    BriefEvent known;
    known.title = beginning(event.title, longestLine);
    known.start = event.start;
    return known.id();
}

bool isSame(const BriefEvent& event, const std::optional<BriefEvent>& other) {
    return other && event.title == other->title && rowKey(event) == rowKey(*other);
}

} // namespace

EventRow::EventRow(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_texts(new PaintedRow(themes, textsPadding, this))
    , m_join(new RowButton(themes, joinPadding, this)) {
    auto* layout = new QHBoxLayout(this);
    keepSpaced(*layout, themes, {}, joinGap);
    layout->addWidget(m_texts, 1);
    layout->addWidget(m_join, 0, Qt::AlignTop);
    connect(m_join, &QAbstractButton::clicked, this, [this] { Q_EMIT joinRequested(m_url); });
}

void EventRow::render(
    const BriefEvent& event, const TimeCell& time, bool isNext, const LinkPolicy& links) {
    m_texts->setContent(eventRow(event, time, isNext));
    setSpokenName(*m_texts, PanelTexts::eventAccessibleName(event, time.text));

    const auto url = joinUrl(event, links);
    m_url = url.value_or(QUrl());
    m_join->setVisible(url.has_value());
    const ColorRole tint = isNext ? ColorRole::Accent : ColorRole::Secondary;
    m_join->setContent({
        .items = {RowItem::makeSymbol(u"video.fill"_s, {.color = tint})},
        .beside = TextLine{beginning(event.title, longestLine), {}},
    });
    const QString join = PanelTexts::joinText(event);
    setToolTipText(*m_join, join);
    setSpokenName(*m_join, join);
}

EventsBody::EventsBody(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_none(new PaintedRow(themes, textsPadding, this))
    , m_more(new PaintedRow(themes, textsPadding, this))
    , m_column(new QVBoxLayout)
    , m_rows(*m_column) {
    auto* layout = new QVBoxLayout(this);
    keepSpaced(*layout, themes, bodyMargins, eventsSpacing);
    keepSpaced(*m_column, themes, {}, eventsSpacing);
    layout->addLayout(m_column);
    layout->addWidget(m_none);
    layout->addWidget(m_more);
}

void EventsBody::render(
    const Briefing& briefing, const std::vector<BriefEvent>& upcoming, Instant now,
    const LinkPolicy& links) {
    const std::vector<BriefEvent> shown(
        upcoming.cbegin(), upcoming.cbegin() + qsizetype(std::min(upcoming.size(), maximumRows)));
    const auto next = nextMeeting(briefing, now, backgroundThreshold);
    const auto make = [this] {
        auto* row = new EventRow(m_themes, this);
        connect(row, &EventRow::joinRequested, this, &EventsBody::joinRequested);
        return row;
    };
    const auto timeLabel = [zone = QTimeZone::systemTimeZone(),
                            locale = QLocale::system()](const BriefEvent& event) {
        return PanelTexts::timeLabel(event, zone, locale);
    };
    QStringList times;
    for (const BriefEvent& event : shown)
        times += timeLabel(event);
    const double column = timeColumn(times, m_themes.theme());
    const auto apply = [&](EventRow& row, const BriefEvent& event) {
        row.render(event, {timeLabel(event), column}, isSame(event, next), links);
    };
    m_rows.reconcile(shown, rowKey, make, apply);

    m_none->setVisible(shown.empty());
    m_none->setSpokenContent(calloutRow(PanelTexts::noEventsText(briefing)));
    const auto remaining = qsizetype(upcoming.size() - shown.size());
    m_more->setVisible(remaining > 0);
    m_more->setSpokenContent(captionRow(PanelTexts::moreEventsText(remaining)));
}

} // namespace lumora
