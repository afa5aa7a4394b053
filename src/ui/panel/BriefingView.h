#pragma once

#include "briefing/LoadState.h"
#include "platform/Clock.h"
#include "platform/LinkPolicy.h"
#include "platform/PreferenceKeys.h"
#include "platform/Preferences.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/ThemeSource.h"

#include <QUrl>
#include <QWidget>

#include <optional>
#include <set>

class QVBoxLayout;

namespace lumora {

class ActionRows;
class CollapsibleSection;
class ErrorBanner;
class EventsBody;
class PaintedRow;
class SpendingSection;

/// What the panel is rendered from: the application's state at one moment.
struct PanelValues {
    const LoadState& state;
    const std::optional<Briefing>& lastGood;
    std::optional<Instant> lastUpdated; ///< when `lastGood` was stored
    const std::set<QString>& pending;   ///< keys of the actions in flight
    const std::optional<QString>& actionError;
    bool isConfigured = true; ///< there is an endpoint and a token
    bool hasDashboard = false;
    LinkPolicy links = LinkPolicy(); ///< those that may be opened
    Instant now;                     ///< the time that the rows are laid out for
};

/// The briefing's part of the panel: banners, sections and the focus line.
class BriefingView : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// What the view works with. Everything must outlive it.
    struct Dependencies {
        const ThemeSource& themes;
        Preferences& preferences; ///< remembers which sections are folded
        Clock& clock;
    };

    explicit BriefingView(const Dependencies& dependencies, QWidget* parent = nullptr);

    /// Shows `values`, whose briefing must be there.
    void render(const PanelValues& values);

    /// Lets time pass for what hides itself again: the spending figures.
    void tick(Instant now);

Q_SIGNALS:
    void joinRequested(const QUrl& url);
    void habitToggled(const QString& id, const QString& key);
    void choreDone(const QString& id, const QString& key);
    void spendingRefreshRequested();

private:
    CollapsibleSection* addSection(
        const QString& title, const QString& symbol, const PreferenceKey<bool>& key, QWidget* body);
    void readFolding();
    void reveal(std::optional<Instant> at);
    void renderSpending();

    Dependencies m_with;
    ErrorBanner* m_failure;
    ErrorBanner* m_actionError;
    EventsBody* m_eventsBody;
    ActionRows* m_habitRows;
    ActionRows* m_choreRows;
    SpendingSection* m_spendingBody;
    QVBoxLayout* m_layout;
    CollapsibleSection* m_events;
    CollapsibleSection* m_habits;
    CollapsibleSection* m_chores;
    CollapsibleSection* m_spending;
    PaintedRow* m_focus;

    std::optional<Spending> m_spendingFigures; ///< of the briefing shown
    bool m_spendingPending = false;
    std::optional<Instant> m_revealedAt;
    Instant m_now; ///< the ticker's, which the spending section follows
};

} // namespace lumora
