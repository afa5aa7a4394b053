#include "views/MenuBarView.h"

#include "views/CaptureField.h"
#include "views/Divider.h"
#include "views/Formatters.h"
#include "views/PaintedRow.h"
#include "views/PanelFooter.h"
#include "views/PanelPlaceholder.h"
#include "views/ReadingOrder.h"
#include "views/RowContents.h"
#include "views/WidgetTexts.h"

#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr QMargins headerPadding{12, 10, 12, 10};
const QString captureAction = u"capture"_s;

} // namespace

MenuBarView::MenuBarView(const BriefingView::Surroundings& surroundings, QWidget* parent)
    : QWidget(parent)
    , m_header(new PaintedRow(surroundings.themes, headerPadding, this))
    , m_placeholder(new PanelPlaceholder(surroundings.themes, this))
    , m_briefing(new BriefingView(surroundings, this))
    , m_capture(new CaptureField(surroundings.themes, surroundings.clock, this))
    , m_footer(new PanelFooter(surroundings.themes, this)) {
    setFixedWidth(panelWidth);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_header);
    layout->addWidget(new Divider(surroundings.themes, this));
    layout->addWidget(m_placeholder);
    layout->addWidget(m_briefing);
    layout->addWidget(new Divider(surroundings.themes, this));
    layout->addWidget(m_capture);
    layout->addWidget(new Divider(surroundings.themes, this));
    layout->addWidget(m_footer);
    m_briefing->hide();
}

void MenuBarView::render(const PanelValues& values) {
    const QString age =
        values.lastUpdated ? Formatters::relative(*values.lastUpdated, values.now) : QString();
    m_header->setContent(headerRow(age));
    setSpokenName(*m_header, age.isEmpty() ? u"Today"_s : u"Today, updated "_s + age);

    const bool hasBriefing = values.lastGood.has_value();
    if (hasBriefing)
        m_briefing->render(values);
    else
        m_placeholder->render(values.state, values.isConfigured);
    m_briefing->setVisible(hasBriefing);
    m_placeholder->setVisible(!hasBriefing);

    m_capture->setPending(values.pending.contains(captureAction));
    m_footer->setDashboardAvailable(values.hasDashboard);
}

QSize MenuBarView::sizeHint() const {
    // Only a banner's height depends on the width; without one the layout has no such height.
    const bool wraps = layout()->hasHeightForWidth();
    return {
        panelWidth, wraps ? layout()->heightForWidth(panelWidth) : layout()->sizeHint().height()};
}

bool MenuBarView::focusNextPrevChild(bool next) {
    const QList<QWidget*> stops = tabStops(*this);
    if (stops.isEmpty())
        return false;
    const qsizetype current = stops.indexOf(window()->focusWidget());
    const qsizetype count = stops.size();
    const qsizetype following = next ? current + 1 : std::max<qsizetype>(current, 0) - 1;
    window()->setAttribute(Qt::WA_KeyboardFocusChange);
    stops.at((following + count) % count)
        ->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void MenuBarView::tick(Instant now) {
    m_briefing->tick(now);
}

} // namespace lumora
