#include "app/LumobarApp.h"

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

} // namespace

LumobarApp::Session::Session(LumobarApp& app)
    : state({
          .clock = *app.m_family.clock,
          .preferences = *app.m_family.preferences,
          .secrets = *app.m_family.secrets,
          .keychain = app.m_keychain,
          .service = app.m_service,
          .reminders = app.m_reminders,
          .wake = *app.m_family.wake,
      })
    , ticker(*app.m_family.clock)
    , controller(state, ticker, *app.m_family.preferences, *app.m_family.statusItem)
    , panel({
          .state = state,
          .ticker = ticker,
          .preferences = *app.m_family.preferences,
          .clock = *app.m_family.clock,
          .urls = *app.m_family.urls,
          .appearance = *app.m_family.appearance,
          .compositing = *app.m_family.compositing,
          .openSettings = [&app] { app.openSettings({}); },
          .quit = [] { QCoreApplication::quit(); },
      })
    , settings(
          {
              .state = state,
              .preferences = *app.m_family.preferences,
              .secrets = *app.m_family.secrets,
              .keychain = app.m_keychain,
              .service = app.m_service,
              .loginItems = *app.m_family.loginItems,
              .reminders = app.m_reminders,
          },
          *app.m_family.appearance) {}

LumobarApp::LumobarApp(PlatformFamily family)
    : m_family(std::move(family))
    , m_keychain(*m_family.secrets)
    , m_service(*m_family.transport, m_keychain, *m_family.clock)
    , m_reminders(*m_family.notifications, *m_family.preferences, *m_family.clock)
    , m_delegate(m_reminders, *m_family.urls)
    , m_commands(handlers()) {
    StatusItem* item = m_family.statusItem.get();
    connect(item, &StatusItem::activated, this, [this](QPoint position, const QByteArray& token) {
        if (m_session)
            m_session->panel.toggle(position, token);
    });
    connect(item, &StatusItem::commandChosen, this, &LumobarApp::runCommand);
    connect(
        m_family.notifications.get(), &NotificationCenter::responded, &m_delegate,
        &AppDelegate::didReceive);
}

void LumobarApp::start() {
    const LoadState nothingYet;
    m_family.statusItem->show(statusItemContent({
        .lastGood = std::nullopt,
        .state = nothingYet,
        .lastUpdated = std::nullopt,
        .menuBarAmbient = {},
        .now = m_family.clock->now(),
    }));
    connect(m_family.statusItem.get(), &StatusItem::shown, this, &LumobarApp::begin);
    QCoro::connect(m_family.clock->wait(statusAreaGrace), &m_callbacks, [this] { begin(); });
}

void LumobarApp::begin() {
    if (m_session)
        return;
    if (!m_commands.claim()) {
        Q_EMIT superseded();
        return;
    }
    m_session.emplace(*this);
    // A fetch, because only the newest briefing says what is to be reminded of.
    connect(
        m_family.notifications.get(), &NotificationCenter::authorizable, &m_session->state,
        &AppState::startPolling);
    followNetwork();
    m_delegate.applicationDidFinishLaunching();
}

void LumobarApp::followNetwork() {
    // A program that starts with the session is often there before the network.
    AppState& state = m_session->state;
    connect(m_family.network.get(), &NetworkMonitor::cameUp, &state, [&state] {
        if (state.state().isFailed())
            state.startPolling();
    });
}

CommandHandlers LumobarApp::handlers() {
    return {
        .status = [this] { return QString::fromUtf8(m_session->controller.report().toJson()); },
        .refresh = [this](auto done) { refresh(done); },
        .open = [this](const QByteArray& token) { m_session->panel.open(token); },
        .hide = [this] { m_session->panel.hide(); },
        .toggle = [this](const QByteArray& token) { m_session->panel.toggle(token); },
        .openSettings = [this](const QByteArray& token) { openSettings(token); },
        .quit = [] { QCoreApplication::quit(); },
    };
}

void LumobarApp::refresh(const std::function<void(QString)>& done) {
    Q_ASSERT(m_session.has_value()); // commands are answered only once work has begun
    auto refreshed = m_session->state.refresh();
    QCoro::connect(std::move(refreshed), &m_callbacks, [this, done] {
        done(m_session->state.state().failureMessage());
    });
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
        m_session->state.refresh();
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
    const auto url = meeting ? joinUrl(*meeting) : std::nullopt;
    if (url)
        m_family.urls->open(*url, activationToken);
}

} // namespace lumora
