#include "doctor/Examination.h"

#include "doctor/Background.h"
#include "linux/autostart/AutostartRegistry.h"
#include "linux/preferences/ConfFilePreferences.h"
#include "linux/preferences/IniDocument.h"
#include "linux/secrets/LibsecretStore.h"
#include "platform/PreferenceKeys.h"
#include "platform/Wiped.h"
#include "service/KeychainService.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// What is found out of the token: the token goes to the service and nowhere else.
struct Token {
    TokenEvidence evidence;
    Wiped<QByteArray> value;
};

Token lookUpToken() {
    LibsecretStore store(QDBusConnection::sessionBus());
    SecretLookup found = store.lookup(tokenKey());
    TokenEvidence evidence{
        .status = found.status,
        .isEmpty = found.secret.trimmed().isEmpty(),
        .reason = found.reason,
        .keeper = store.keeper(),
    };
    return {std::move(evidence), Wiped(std::exchange(found.secret, {}))};
}

QHash<QString, QString> settingsIn(const QByteArray& file) {
    QHash<QString, QString> settings;
    const auto document = IniDocument::parse(file);
    for (const QString& key :
         {PreferenceKeys::endpointURL.name, PreferenceKeys::label.name,
          PreferenceKeys::barTone.name}) {
        const auto value = document ? document->value(key) : std::nullopt;
        if (value)
            settings.insert(key, *value);
    }
    return settings;
}

QHash<QString, QString> environmentNow() {
    QHash<QString, QString> environment;
    for (const char* name :
         {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_CURRENT_DESKTOP", "https_proxy",
          "HTTPS_PROXY", "all_proxy", "ALL_PROXY", "no_proxy", "NO_PROXY"}) {
        if (!qEnvironmentVariableIsEmpty(name))
            environment.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
    }
    return environment;
}

Instant wallClock() {
    return std::chrono::time_point_cast<Instant::duration>(std::chrono::system_clock::now());
}

} // namespace

Evidence examine(std::chrono::milliseconds limit) {
    const auto end = Clock::now() + limit;
    const QString path = ConfFilePreferences::defaultPath();
    const Background preferences([path] { return readFile(path); });
    const Background token(&lookUpToken);
    const Background session(
        [] { return probeSession(qEnvironmentVariable("XDG_CURRENT_DESKTOP")); });
    const Background wake(&hasWakeService);
    const Background loginItem([] {
        const AutostartRegistry registry;
        return LoginItemEvidence{registry.status(), registry.place()};
    });

    Evidence evidence;
    evidence.environment = environmentNow();
    evidence.preferencesPath = pathForPeople(path);
    evidence.preferences = preferences.by(Clock::now() + limit / 4);
    if (evidence.preferences && *evidence.preferences)
        evidence.settings = settingsIn(**evidence.preferences);
    const auto found = token.by(Clock::now() + limit / 4);
    if (found)
        evidence.token = found->evidence;

    if (const auto url = serviceUrl(evidence)) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        const auto patience = std::max<std::chrono::milliseconds>(left - 500ms, 1ms);
        const Wiped value = found ? found->value : Wiped(QByteArray());
        const Background service(
            [url = *url, value, patience] { return probeService(url, value.text(), patience); });
        evidence.askedService = true;
        evidence.service = service.by(end);
        evidence.now = wallClock();
    }
    evidence.session = session.by(end);
    evidence.wakeService = wake.by(end);
    evidence.loginItem = loginItem.by(end);
    return evidence;
}

} // namespace lumora
