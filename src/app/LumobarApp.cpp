#include "app/LumobarApp.h"

#include "platform/Spawn.h"
#include "texts/StatusPresentation.h"

#include <QCoreApplication>

#include <chrono>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

// A status area that is there answers within a few milliseconds; work does not wait longer for
// one that may not exist.
constexpr auto statusAreaGrace = 300ms;

// Desktops that are just starting have their bars by then.
constexpr auto untilAllBarsAreThere = 30s;

// By then everybody has let go of what was shown before.
constexpr auto untilMemoryIsSpare = 5s;

} // namespace

LumobarApp::Session::Session(LumobarApp& app)
    : state({
          .clock = *app.m_platform.clock,
          .preferences = *app.m_platform.preferences,
          .secrets = *app.m_platform.secrets,
          .keychain = app.m_keychain,
          .service = app.m_service,
          .reminders = app.m_reminders,
          .wake = *app.m_platform.wake,
      })
    , ticker(*app.m_platform.clock)
    , controller(state, ticker, *app.m_platform.preferences, *app.m_platform.statusItem)
    , remote({state, ticker, *app.m_platform.preferences, *app.m_platform.urls})
    , themes(
          *app.m_platform.appearance, *app.m_platform.compositing,
          qEnvironmentVariable("XDG_CURRENT_DESKTOP"))
    , panel({
          .state = state,
          .ticker = ticker,
          .preferences = *app.m_platform.preferences,
          .clock = *app.m_platform.clock,
          .urls = *app.m_platform.urls,
          .themes = themes.themes(),
          .compositing = *app.m_platform.compositing,
          .layer = app.m_platform.panelLayer.get(),
          .openSettings = [&app](const QByteArray& token) { app.openSettings(token); },
          .quit = [] { QCoreApplication::quit(); },
      })
    , settings(
          {
              .state = state,
              .preferences = *app.m_platform.preferences,
              .secrets = *app.m_platform.secrets,
              .keychain = app.m_keychain,
              .service = app.m_service,
              .loginItems = *app.m_platform.loginItems,
              .reminders = app.m_reminders,
              .desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
          },
          themes.themes()) {}

LumobarApp::LumobarApp(const PlatformFamily& platform)
    : m_platform(platform)
    , m_keychain(*m_platform.secrets)
    , m_service(*m_platform.transport, m_keychain, *m_platform.clock, *m_platform.background)
    , m_reminders(*m_platform.notifications, *m_platform.preferences, *m_platform.clock)
    , m_delegate(m_reminders, *m_platform.preferences, *m_platform.urls)
    , m_notice(
          {.item = *m_platform.statusItem,
           .notifications = *m_platform.notifications,
           .preferences = *m_platform.preferences,
           .clock = *m_platform.clock,
           .desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP")})
    , m_commands(handlers()) {
    StatusItem* item = m_platform.statusItem.get();
    connect(item, &StatusItem::activated, this, [this](QPoint position, const QByteArray& token) {
        if (m_session)
            m_session->panel.toggle(position, token);
    });
    connect(item, &StatusItem::commandChosen, this, &LumobarApp::runCommand);
    connect(
        m_platform.notifications.get(), &NotificationCenter::responded, &m_delegate,
        &AppDelegate::didReceive);
}

void LumobarApp::start() {
    const LoadState nothingYet;
    m_platform.statusItem->show(statusItemContent({
        .lastGood = std::nullopt,
        .state = nothingYet,
        .lastUpdated = std::nullopt,
        .menuBarAmbient = {},
        .now = m_platform.clock->now(),
    }));
    connect(m_platform.statusItem.get(), &StatusItem::shown, this, &LumobarApp::begin);
    spawn(this, m_platform.clock->wait(statusAreaGrace), [this] { begin(); });
}

void LumobarApp::begin() {
    if (m_session)
        return;
    if (!m_commands.claim()) {
        Q_EMIT superseded();
        return;
    }
    m_session.emplace(*this);
    connect(
        &m_session->controller, &StatusItemController::labelChanged, &m_commands,
        &CommandServer::announceLabel);
    connect(
        &m_session->controller, &StatusItemController::detailsChanged, &m_commands,
        &CommandServer::announceDetails);
    // A fetch, because only the newest briefing says what is to be reminded of.
    connect(
        m_platform.notifications.get(), &NotificationCenter::authorizable, &m_session->state,
        &AppState::startPolling);
    followNetwork();
    connect(&m_session->state, &AppState::changed, this, &LumobarApp::tidyLater);
    spawn(this, m_platform.clock->wait(untilAllBarsAreThere), [this] { m_notice.tell(); });
    m_delegate.applicationDidFinishLaunching();
}

void LumobarApp::followNetwork() {
    // A program that starts with the session is often there before the network.
    AppState& state = m_session->state;
    connect(m_platform.network.get(), &NetworkMonitor::cameUp, &state, [&state] {
        if (state.state().isFailed())
            state.startPolling();
    });
}

void LumobarApp::tidyLater() {
    const bool nothingWentYet = m_session->state.state().isLoading();
    if (nothingWentYet || std::exchange(m_tidying, true))
        return;
    spawn(this, m_platform.clock->wait(untilMemoryIsSpare), [this] {
        m_tidying = false;
        m_session->panel.letGo();
        m_platform.returnSpareMemory();
    });
}

CommandHandlers LumobarApp::handlers() {
    return {
        .status = [this] { return QString::fromUtf8(m_session->controller.report().toJson()); },
        .refresh = [this](auto done) { refresh(done); },
        .join =
            [this](const QByteArray& token, const auto& done) {
                m_session->remote.join(token, done);
            },
        .capture =
            [this](const QString& text, const auto& done) {
                m_session->remote.capture(text, done);
            },
        .toggleHabit =
            [this](const QString& habit, const auto& done) {
                m_session->remote.toggleHabit(habit, done);
            },
        .finishChore =
            [this](const QString& chore, const auto& done) {
                m_session->remote.finishChore(chore, done);
            },
        .agenda = [this] { return m_session->remote.agenda(); },
        .open = [this](const QByteArray& token) { m_session->panel.open(token); },
        .hide = [this] { m_session->panel.hide(); },
        .toggle = [this](const QByteArray& token) { m_session->panel.toggle(token); },
        .openSettings = [this](const QByteArray& token) { openSettings(token); },
        .quit = [] { QCoreApplication::quit(); },
    };
}

void LumobarApp::refresh(const std::function<void(std::optional<QString>)>& done) {
    Q_ASSERT(m_session.has_value()); // commands are answered only once work has begun
    AppState& state = m_session->state;
    spawn(&state, state.refresh(), [&state, done] { done(state.state().failureMessage()); });
}

void LumobarApp::runCommand(MenuCommand command, const QByteArray& activationToken) {
    if (command == MenuCommand::Quit)
        QCoreApplication::quit();
    if (!m_session)
        return;
    switch (command) {
    case MenuCommand::Open:
        m_session->panel.openFromMenu(activationToken);
        break;
    case MenuCommand::Join:
        joinMeeting(activationToken);
        break;
    case MenuCommand::Refresh:
        spawn(m_session->state.refresh());
        break;
    case MenuCommand::Settings:
        openSettings(activationToken);
        break;
    case MenuCommand::None:
    case MenuCommand::Quit:
        break;
    }
}

void LumobarApp::openSettings(const QByteArray& activationToken) {
    m_session->settings.open(activationToken);
}

void LumobarApp::joinMeeting(const QByteArray& activationToken) {
    const auto meeting = offeredMeeting(m_session->state.lastGood(), m_session->ticker.now());
    const auto url =
        meeting ? joinUrl(*meeting, linkPolicy(*m_platform.preferences)) : std::nullopt;
    if (url)
        m_platform.urls->open(*url, activationToken);
}

} // namespace lumora
