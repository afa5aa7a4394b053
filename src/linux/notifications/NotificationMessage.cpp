#include "linux/notifications/NotificationMessage.h"

#include "texts/PlainText.h"

#include <algorithm>
#include <chrono>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr uchar normalUrgency = 1;
constexpr int serversOwnTimeout = -1;
constexpr std::chrono::milliseconds shortestTimeout = std::chrono::seconds(10);
const QString programId = u"com.lumora.app"_s; // both the icon's and the desktop entry's name

/// Whose later versions draw an empty button for the click, which does nothing but close there.
const QString xfce = u"Xfce Notify Daemon"_s;

/// Pairs of key and label. The default action, which is the click itself, is there for every
/// notification: some servers start the program instead where there is none. It has no label, so
/// that no other server draws a button for it.
QStringList actions(const NotificationRequest& request, const QString& program) {
    QStringList actions;
    if (program != xfce)
        actions += {u"default"_s, QString()};
    if (request.button)
        actions += {u"button"_s, *request.button};
    return actions;
}

QVariantMap hints() {
    return {
        {u"desktop-entry"_s, programId},
        {u"sound-name"_s, u"message-new-instant"_s},
        {u"urgency"_s, QVariant::fromValue(normalUrgency)}, // servers ignore any type but a byte
    };
}

/// In milliseconds. Left to themselves, some servers take a notification away after five seconds,
/// when nobody may have looked.
int timeout(const NotificationRequest& request, Instant now) {
    if (!request.usefulUntil || *request.usefulUntil <= now)
        return serversOwnTimeout;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*request.usefulUntil - now);
    constexpr std::chrono::milliseconds longest(std::numeric_limits<int>::max());
    return int(std::clamp(left, shortestTimeout, longest).count());
}

} // namespace

QVariantList notifyArguments(
    const NotificationRequest& request, const NotificationAbilities& abilities, uint replacesId,
    Instant now) {
    const bool parsesMarkup = abilities.capabilities.contains("body-markup"_L1);
    const bool takesActions = abilities.capabilities.contains("actions"_L1);
    return {
        u"Lumora"_s,
        replacesId,
        programId,
        singleLine(request.title),
        parsesMarkup ? escapedForMarkup(request.body) : plainLines(request.body),
        takesActions ? actions(request, abilities.program) : QStringList(),
        hints(),
        timeout(request, now),
    };
}

} // namespace lumora
