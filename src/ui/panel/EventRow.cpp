#include "ui/panel/EventRow.h"

#include "texts/PanelTexts.h"
#include "texts/StatusPresentation.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/RowButton.h"
#include "ui/rows/WidgetTexts.h"

#include <QHBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

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

} // namespace lumora
