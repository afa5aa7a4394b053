#include "texts/SettingsTexts.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

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
