#include "ui/settings/SettingsModel.h"

#include "platform/AppStorageBacked.h"
#include "platform/LoginItemRegistry.h"
#include "platform/Preferences.h"
#include "platform/SecretStore.h"
#include "platform/Spawn.h"
#include "reminders/MeetingReminders.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"
#include "state/AppState.h"
#include "state/LoginItemService.h"
#include "texts/SettingsTexts.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

bool isEnabled(const LoginItemRegistry& registry) {
    return registry.status() == LoginItemStatus::Enabled;
}

} // namespace

SettingsModel::SettingsModel(const Dependencies& dependencies)
    : m_with(dependencies)
    , m_launchAtLogin(isEnabled(m_with.loginItems)) {
    connect(&m_with.preferences, &Preferences::changed, this, &SettingsModel::announce);
    connect(&m_with.secrets, &SecretStore::readable, this, &SettingsModel::becameReadable);
}

void SettingsModel::appear() {
    m_shown = true;
    m_token = storedToken();
    m_with.keychain.askToUnlock();
    m_tokenTouched = false;
    m_keychainExplanation = lumora::keychainExplanation(m_with.secrets.keeper());
    lookAgain();
}

void SettingsModel::lookAgain() {
    // Looking changes nothing: this is no move of the switch.
    m_launchAtLogin = isEnabled(m_with.loginItems);
    announce();
}

void SettingsModel::disappear() {
    m_shown = false;
    wipe(m_token);
    m_token.clear();
}

void SettingsModel::announce() {
    if (m_shown && !m_storing)
        Q_EMIT changed();
}

/// Stores a preference and announces what became of that, once everything about it is known.
void SettingsModel::keep(const std::function<tl::expected<void, QString>()>& store) {
    m_storing = true;
    const auto stored = store();
    m_storing = false;
    if (!stored)
        m_storeError = stored.error();
    announce();
}

std::optional<QString> SettingsModel::unstoredMessage(const QString& key) const {
    if (m_with.preferences.isStored(key))
        return std::nullopt;
    return unstoredText(m_storeError);
}

QString SettingsModel::endpointURL() const {
    return m_with.state.endpointURL();
}

void SettingsModel::setEndpointURL(const QString& endpoint) {
    if (endpoint != endpointURL())
        keep([&] { return m_with.state.setEndpointURL(endpoint); });
}

void SettingsModel::setToken(const QString& token) {
    if (token == m_token)
        return;
    m_token = token;
    m_tokenTouched = true;
    announce();
}

QString SettingsModel::storedToken() const {
    const auto token = m_with.keychain.getToken();
    return token ? token->text() : QString();
}

void SettingsModel::storeToken() {
    const bool stored = m_with.keychain.setToken(m_token);
    m_unsaved = stored ? std::nullopt : std::optional(m_token);
}

void SettingsModel::becameReadable() {
    // A locked keyring has asked the user to unlock it, and they have.
    if (m_unsaved) {
        if (m_with.keychain.setToken(*m_unsaved))
            m_unsaved.reset();
    } else if (m_shown && !m_tokenTouched && m_token.isEmpty()) {
        m_token = storedToken();
        announce();
    }
}

void SettingsModel::saveToken() {
    storeToken();
    m_testResult = savedResult();
    announce();
    // Later, so that the keyring's time and the refresh's do not add up to one wait.
    QMetaObject::invokeMethod(
        this, [this] { spawn(m_with.state.refresh()); }, Qt::QueuedConnection);
}

void SettingsModel::testConnection() {
    if (m_testing)
        return;
    if (!m_token.isEmpty())
        storeToken();
    m_testing = true;
    m_testResult.reset();
    announce();
    QMetaObject::invokeMethod(this, [this] { spawn(runTest()); }, Qt::QueuedConnection);
}

QCoro::Task<> SettingsModel::runTest() {
    const QPointer<SettingsModel> self(this);
    const auto fetched = co_await m_with.service.fetchBriefing(m_with.state.endpointURL());
    if (!self)
        co_return;

    m_testResult = fetched ? succeededResult(qsizetype(fetched->eventsToday.size()))
                           : failedResult(fetched.error().errorDescription());
    if (fetched) {
        announce();
        co_await m_with.state.refresh();
        if (!self)
            co_return;
    }
    m_testing = false;
    announce();
}

qint64 SettingsModel::refreshMinutes() const {
    return m_with.state.refreshMinutes();
}

void SettingsModel::setRefreshMinutes(qint64 minutes) {
    if (minutes == refreshMinutes())
        return;
    keep([&] { return m_with.state.setRefreshMinutes(minutes); });
    m_with.state.startPolling();
}

void SettingsModel::setLaunchAtLogin(bool enabled) {
    if (enabled == m_launchAtLogin)
        return;
    m_launchAtLogin = enabled;
    const auto done = LoginItemService(m_with.loginItems).setEnabled(enabled);
    if (done) {
        m_loginItemError.reset();
        announce();
        return;
    }
    m_loginItemError = done.error();
    announce();
    // Back to where things really stand. Where that moves the switch it is a change like any
    // other: what is half registered goes, and an item that is fine takes its error along.
    setLaunchAtLogin(isEnabled(m_with.loginItems));
}

std::optional<QString> SettingsModel::loginItemMessage() const {
    return m_loginItemError ? m_loginItemError : loginItemHint(m_with.loginItems.status());
}

std::optional<QString> SettingsModel::loginItemExplanation() const {
    if (m_loginItemError)
        return std::nullopt;
    const LoginItemRegistry& items = m_with.loginItems;
    return lumora::loginItemExplanation(items.status(), items.place(), m_with.desktop);
}

bool SettingsModel::notifyBeforeMeetings() const {
    return AppStorageBacked(m_with.preferences, PreferenceKeys::notifyBeforeMeetings)
        .wrappedValue();
}

void SettingsModel::setNotifyBeforeMeetings(bool notify) {
    if (notify == notifyBeforeMeetings())
        return;
    keep([&] {
        return storePreference(m_with.preferences, PreferenceKeys::notifyBeforeMeetings, notify);
    });
    spawn(this, m_with.reminders.requestAuthorization(), [this] { spawn(m_with.state.refresh()); });
}

MenuBarAmbient SettingsModel::menuBarAmbient() const {
    return menuBarAmbientFromRaw(
        AppStorageBacked(m_with.preferences, PreferenceKeys::menuBarAmbient).wrappedValue());
}

void SettingsModel::setMenuBarAmbient(MenuBarAmbient ambient) {
    if (ambient == menuBarAmbient())
        return;
    keep([&] {
        return storePreference(
            m_with.preferences, PreferenceKeys::menuBarAmbient, rawValue(ambient));
    });
}

} // namespace lumora
