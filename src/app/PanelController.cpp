#include "app/PanelController.h"

#include "linux/session/WindowSystem.h"
#include "platform/LinkPolicy.h"
#include "platform/PanelLayer.h"
#include "platform/Spawn.h"
#include "platform/UrlOpener.h"
#include "service/LumoAction.h"
#include "state/AppState.h"
#include "state/Ticker.h"
#include "ui/access/SpokenWidgets.h"
#include "ui/panel/CaptureField.h"
#include "ui/panel/MenuBarView.h"
#include "ui/panel/PanelFooter.h"
#include "ui/window/PanelWindow.h"

#include <QPointer>
#include <QShortcut>

#include <chrono>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

/// From the first briefing until the panel is got ready: by then the program has nothing else to
/// do.
constexpr auto restBeforePreparing = 2s;

/// What a press at `position` tells of the place of the status item.
AnchorEvidence evidenceOfPress(std::optional<QPoint> position) {
    return {
        .pointer = pointerPosition(),
        .activation = position,
        .lastGood = std::nullopt,
        .pressed = true,
    };
}

} // namespace

PanelController::PanelController(Dependencies dependencies)
    : m_with(std::move(dependencies)) {
    speakWidgets();
    connect(&m_with.state, &AppState::changed, this, [this] {
        if (m_window && m_window->isVisible())
            render();
        prepareOnce();
    });
    connect(&m_with.ticker, &Ticker::ticked, this, [this] {
        if (m_view)
            m_view->tick(m_with.ticker.now());
    });
}

PanelController::~PanelController() = default;

void PanelController::toggle(QPoint position, const QByteArray& activationToken) {
    window().toggle(evidenceOfPress(position), activationToken);
    completeStartup(activationToken);
}

void PanelController::openFromMenu(const QByteArray& activationToken) {
    window().showAt(evidenceOfPress(std::nullopt), activationToken);
    completeStartup(activationToken);
}

void PanelController::open(const QByteArray& activationToken) {
    window().showAt({}, activationToken);
    completeStartup(activationToken);
}

void PanelController::toggle(const QByteArray& activationToken) {
    window().toggle({}, activationToken);
    completeStartup(activationToken);
}

void PanelController::hide() {
    if (m_window)
        m_window->hide();
}

PanelWindow& PanelController::window() {
    if (!m_window) {
        m_view = new MenuBarView({m_with.themes, m_with.preferences, m_with.clock});
        m_window = std::make_unique<PanelWindow>(
            m_view, PanelWindow::Dependencies{
                        .themes = m_with.themes,
                        .compositing = m_with.compositing,
                        .clock = m_with.clock,
                        .layer = m_with.layer,
                        .placesWindows = m_with.layer || currentWindowSystem().placesWindows,
                        .prepare = [](const QWidget& panel) { keepOffTaskBar(panel.winId()); },
                    });
        connectView();
    }
    return *m_window;
}

void PanelController::connectView() {
    connect(m_window.get(), &PanelWindow::aboutToShow, this, [this] {
        render();
        m_view->scrollToTop();
    });
    // Columns are as wide as their texts, and these as large as the desktop says.
    connect(&m_with.themes, &ThemeSource::changed, this, [this] {
        if (m_window->isVisible())
            render();
    });

    BriefingView* const briefing = m_view->briefing();
    connect(
        briefing, &BriefingView::joinRequested, this, [this](const QUrl& url) { openLink(url); });
    connect(
        briefing, &BriefingView::habitToggled, this, [this](const QString& id, const QString& key) {
            spawn(m_with.state.perform(LumoAction::habitToggle(id), key));
        });
    connect(
        briefing, &BriefingView::choreDone, this, [this](const QString& id, const QString& key) {
            spawn(m_with.state.perform(LumoAction::choreDone(id), key));
        });
    connect(briefing, &BriefingView::spendingRefreshRequested, this, [this] {
        spawn(m_with.state.refreshSpending());
    });
    connect(m_view->capture(), &CaptureField::submitted, this, &PanelController::capture);

    PanelFooter* const footer = m_view->footer();
    const auto refresh = [this] { spawn(m_with.state.refresh()); };
    connect(footer, &PanelFooter::refreshRequested, this, refresh);
    connect(footer, &PanelFooter::dashboardRequested, this, &PanelController::openDashboard);
    connect(footer, &PanelFooter::settingsRequested, this, &PanelController::openSettings);
    connect(footer, &PanelFooter::quitRequested, this, m_with.quit);

    const auto shortcut = [this](const QKeySequence& keys, const std::function<void()>& action) {
        auto* const made = new QShortcut(keys, m_window.get());
        connect(made, &QShortcut::activated, this, action);
    };
    shortcut(Qt::CTRL | Qt::Key_R, refresh);
    shortcut(Qt::CTRL | Qt::Key_Comma, [this] { openSettings(); });
    shortcut(Qt::CTRL | Qt::Key_Q, m_with.quit);
}

void PanelController::prepareOnce() {
    if (m_preparing || !m_with.state.lastGood())
        return;
    m_preparing = true;
    spawn(this, m_with.clock.wait(restBeforePreparing), [this] { prepare(); });
}

void PanelController::prepare() {
    if (m_window)
        return; // the user was faster
    window();
    renderUnseen();
    m_window->rehearse();
}

void PanelController::letGo() {
    const bool holdsAnother = m_held && m_held != m_with.state.lastUpdated();
    if (holdsAnother && !m_window->isVisible())
        renderUnseen();
}

/// Without failures: they are told when they are first shown, and nobody sees this.
void PanelController::renderUnseen() {
    m_held = m_with.state.lastUpdated();
    m_view->render({
        .state = LoadState(),
        .lastGood = m_with.state.lastGood(),
        .lastUpdated = m_with.state.lastUpdated(),
        .pending = {},
        .actionError = std::nullopt,
        .links = linkPolicy(m_with.preferences),
        .now = m_with.clock.now(),
    });
}

void PanelController::render() {
    const AppState& state = m_with.state;
    m_held = state.lastUpdated();
    m_view->render({
        .state = state.state(),
        .lastGood = state.lastGood(),
        .lastUpdated = state.lastUpdated(),
        .pending = state.pending(),
        .actionError = state.actionError(),
        // Only the placeholder needs to know, and the question goes to the keyring.
        .isConfigured = state.lastGood() || !state.state().isFailed() || state.isConfigured(),
        .hasDashboard = state.dashboardURL().has_value(),
        .links = linkPolicy(m_with.preferences),
        .now = m_with.clock.now(),
    });
    m_view->tick(m_with.ticker.now());
}

void PanelController::capture(const QString& thought) {
    spawn(m_view, m_with.state.capture(thought), [view = m_view](bool accepted) {
        if (accepted)
            view->capture()->showSaved();
    });
}

void PanelController::openDashboard() {
    if (const auto url = m_with.state.dashboardURL())
        openLink(*url);
}

void PanelController::openSettings() {
    handOver(m_with.openSettings);
}

void PanelController::openLink(const QUrl& url) {
    if (!linkPolicy(m_with.preferences).allows(url))
        return;
    handOver([this, url](const QByteArray& token) { m_with.urls.open(url, token); });
}

/// Whatever is opened takes the focus, and the panel closes with that; but in a layer in front of
/// everything it would keep both.
void PanelController::handOver(const std::function<void(const QByteArray& activationToken)>& next) {
    if (!m_with.layer) {
        next({});
        return;
    }
    m_with.layer->requestToken(
        [self = QPointer<PanelController>(this), next](const QByteArray& token) {
            if (!self)
                return;
            self->hide();
            next(token);
        });
}

} // namespace lumora
