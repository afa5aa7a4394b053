#include "texts/SettingsTexts.h"

#include "platform/DesktopNames.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// Where each desktop lets people switch off what starts at login.
QString startupSettings(const QString& desktop) {
    static const std::array<std::pair<QLatin1StringView, QString>, 9> settings{{
        {"KDE"_L1, u"System Settings › Autostart"_s},
        {"XFCE"_L1, u"Session and Startup › Application Autostart"_s},
        {"LXQt"_L1, u"LXQt Session Settings › Autostart"_s},
        {"Budgie"_L1, u"Budgie Desktop Settings › Autostart"_s},
        {"X-Cinnamon"_L1, u"Startup Applications"_s},
        {"MATE"_L1, u"Startup Applications"_s},
        {"Unity"_L1, u"Startup Applications"_s},
        {"Pantheon"_L1, u"System Settings › Applications › Startup"_s},
        // The last: others build on it and name it too.
        {"GNOME"_L1, u"Tweaks › Startup Applications"_s},
    }};
    for (const auto& [name, place] : settings) {
        if (namesDesktop(desktop, {name}))
            return place;
    }
    return u"the desktop's settings for programs that start at login"_s;
}

} // namespace

QString intervalText(qint64 minutes) {
    return minutes == 1 ? u"1 minute"_s : u"%1 minutes"_s.arg(minutes);
}

QString savedResult() {
    return u"✓ Saved"_s;
}

QString succeededResult(qsizetype eventCount) {
    // Always in the plural: the line reads as a count, not as a sentence.
    return u"✓ %1 events today"_s.arg(eventCount);
}

QString failedResult(const QString& message) {
    return u"✗ "_s + message;
}

bool isGoodNews(const QString& result) {
    return result.startsWith(u'✓');
}

QString unstoredText(const QString& reason) {
    return u"Not stored (%1). It holds until Lumora ends."_s.arg(reason);
}

std::optional<QString> loginItemHint(LoginItemStatus status) {
    switch (status) {
    case LoginItemStatus::NotFound:
        return u"Move Lumora to /Applications for this to stick"_s;
    case LoginItemStatus::RequiresApproval:
        return u"Turned off in System Settings › General › Login Items"_s;
    case LoginItemStatus::NotRegistered:
    case LoginItemStatus::Enabled:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

std::optional<QString>
loginItemExplanation(LoginItemStatus status, const QString& entry, const QString& desktop) {
    const QString file = entry.isEmpty() ? u"its autostart entry"_s : entry;
    switch (status) {
    case LoginItemStatus::NotFound:
        return u"On this desktop Lumora starts at login by %1, but the program that the file names "
               "is not there. Keep Lumora in one place and turn the switch on: that writes the "
               "file anew."_s.arg(file);
    case LoginItemStatus::RequiresApproval:
        return u"On this desktop Lumora starts at login by %1, and that file is switched off. Turn "
               "it on here, or in %2."_s.arg(file, startupSettings(desktop));
    case LoginItemStatus::NotRegistered:
    case LoginItemStatus::Enabled:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

QString keychainExplanation(const QString& keyring) {
    const QString name = keyring.isEmpty() ? u"the desktop's keyring (Secret Service)"_s : keyring;
    return u"On this desktop the keychain is %1. The token is there as “Lumora briefing token”, "
           u"and "
           "in no file of Lumora's own."_s.arg(name);
}

QString endpointDescription(const QString& endpointURL) {
    const QString address = endpointURL.trimmed();
    return address.isEmpty() ? u"the endpoint above"_s : address;
}

QList<TextRun> tokenNote(const QString& endpointURL) {
    // The address is a run of its own, so that none of its characters can be taken for markup.
    return {
        {u"The token is stored in your macOS keychain and sent as the X-Api-Key header to "_s},
        {endpointDescription(endpointURL)},
        {u". Set the matching secret server-side with "_s},
        {u"firebase functions:secrets:set BRIEFING_TOKEN"_s, true},
        {u"."_s},
    };
}

QString plainText(const QList<TextRun>& runs) {
    QString text;
    for (const TextRun& run : runs)
        text += run.text;
    return text;
}

} // namespace lumora
