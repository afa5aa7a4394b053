#include "ui/panel/BriefingView.h"

#include "briefing/ActionKeys.h"
#include "platform/AppStorageBacked.h"
#include "texts/PanelTexts.h"
#include "texts/SpendingTexts.h"
#include "ui/panel/ActionRows.h"
#include "ui/panel/CollapsibleSection.h"
#include "ui/panel/ErrorBanner.h"
#include "ui/panel/EventsBody.h"
#include "ui/panel/RowContents.h"
#include "ui/panel/SpendingSection.h"
#include "ui/theme/PanelMetrics.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr int spacing = 12 - PanelMetrics::headerReach;
constexpr QMargins padding =
    QMargins{PanelMetrics::padding, 10, PanelMetrics::padding, 10} - PanelMetrics::besideSections;

} // namespace

BriefingView::BriefingView(const Dependencies& dependencies, QWidget* parent)
    : QWidget(parent)
    , m_with(dependencies)
    , m_failure(new ErrorBanner(m_with.themes, PanelMetrics::besideSections, this))
    , m_actionError(new ErrorBanner(m_with.themes, PanelMetrics::besideSections, this))
    , m_eventsBody(new EventsBody(m_with.themes))
    , m_habitRows(new ActionRows(m_with.themes))
    , m_choreRows(new ActionRows(m_with.themes))
    , m_spendingBody(new SpendingSection(m_with.themes))
    , m_layout(new QVBoxLayout(this))
    , m_now(m_with.clock.now()) {
    keepSpaced(*m_layout, m_with.themes, padding, spacing);
    m_layout->addWidget(m_failure);
    m_layout->addWidget(m_actionError);
    m_events =
        addSection(u"Next up"_s, u"calendar"_s, PreferenceKeys::eventsCollapsed, m_eventsBody);
    m_habits = addSection(u"Habits"_s, u"flame"_s, PreferenceKeys::habitsCollapsed, m_habitRows);
    m_chores =
        addSection(u"Chores due"_s, u"checklist"_s, PreferenceKeys::choresCollapsed, m_choreRows);
    m_spending = addSection(
        u"Spending"_s, u"creditcard"_s, PreferenceKeys::spendingCollapsed, m_spendingBody);
    m_focus = new PaintedRow(m_with.themes, PanelMetrics::besideSections, this);
    m_layout->addWidget(m_focus);

    connect(m_eventsBody, &EventsBody::joinRequested, this, &BriefingView::joinRequested);
    connect(m_habitRows, &ActionRows::triggered, this, &BriefingView::habitToggled);
    connect(m_choreRows, &ActionRows::triggered, this, &BriefingView::choreDone);
    connect(m_spendingBody, &SpendingSection::revealRequested, this, [this] {
        reveal(m_with.clock.now());
    });
    connect(
        m_spendingBody, &SpendingSection::hideRequested, this, [this] { reveal(std::nullopt); });
    connect(
        m_spendingBody, &SpendingSection::refreshRequested, this,
        &BriefingView::spendingRefreshRequested);
    connect(&m_with.preferences, &Preferences::changed, this, &BriefingView::readFolding);
    readFolding();
}

CollapsibleSection* BriefingView::addSection(
    const QString& title, const QString& symbol, const PreferenceKey<bool>& key, QWidget* body) {
    auto* section = new CollapsibleSection(
        m_with.themes, {.title = title, .systemImage = symbol, .badge = std::nullopt}, body, this);
    connect(section, &CollapsibleSection::toggled, this, [this, section, key](bool collapsed) {
        section->setCollapsed(collapsed);
        // Where it cannot be stored it holds for as long as the program runs, which is enough for a
        // panel that shows a day.
        std::ignore = storePreference(m_with.preferences, key, collapsed);
    });
    m_layout->addWidget(section);
    return section;
}

void BriefingView::readFolding() {
    const auto isCollapsed = [this](const PreferenceKey<bool>& key) {
        return AppStorageBacked(m_with.preferences, key).wrappedValue();
    };
    m_events->setCollapsed(isCollapsed(PreferenceKeys::eventsCollapsed));
    m_habits->setCollapsed(isCollapsed(PreferenceKeys::habitsCollapsed));
    m_chores->setCollapsed(isCollapsed(PreferenceKeys::choresCollapsed));
    m_spending->setCollapsed(isCollapsed(PreferenceKeys::spendingCollapsed));
}

void BriefingView::render(const PanelValues& values) {
    const Briefing& briefing = *values.lastGood;
    m_failure->setMessage(values.state.failureMessage());
    m_actionError->setMessage(values.actionError);

    const auto upcoming = PanelTexts::upcomingEvents(briefing, values.now);
    m_events->setSummary(PanelTexts::eventsSummary(briefing, upcoming));
    m_eventsBody->render(briefing, upcoming, values.now, values.links);

    m_habits->setVisible(!briefing.habits.items.empty());
    m_habits->setSummary(PanelTexts::habitsSummary(briefing.habits));
    const auto habits = habitRows(briefing.habits);
    m_habitRows->render(habits, values.pending, briefing.habits.items.size() - habits.size());

    m_chores->setVisible(!briefing.chores.top.empty());
    m_chores->setSummary(PanelTexts::choresSummary(briefing.chores));
    const auto chores = choreRows(briefing.chores);
    m_choreRows->render(chores, values.pending, briefing.chores.top.size() - chores.size());

    m_spendingFigures = briefing.spending;
    m_spendingPending = values.pending.contains(ActionKeys::spending);
    renderSpending();

    m_focus->setSpokenContent(focusRow(briefing));
}

void BriefingView::tick(Instant now) {
    m_now = now;
    renderSpending();
}

void BriefingView::reveal(std::optional<Instant> at) {
    m_revealedAt = at;
    renderSpending();
}

void BriefingView::renderSpending() {
    m_spending->setVisible(m_spendingFigures.has_value());
    const bool revealed = m_spendingFigures && SpendingTexts::isRevealed(m_revealedAt, m_now);
    if (revealed)
        m_spendingBody->showRevealed(*m_spendingFigures, m_spendingPending);
    else
        m_spendingBody->showHidden();
    // One that has ended does not come back when the clock is set back.
    if (!revealed)
        m_revealedAt.reset();
    // Figures that are gone leave no digest behind either.
    m_spending->setSummary(
        m_spendingFigures
            ? std::optional(SpendingTexts::summary(*m_spendingFigures, revealed, QLocale::system()))
            : std::nullopt);
}

} // namespace lumora
