#include "linux/notifications/NotificationMessage.h"

#include "texts/PlainText.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr uchar normalUrgency = 1;
constexpr int serversOwnTimeout = -1;
const QString programId = u"com.lumora.app"_s; // both the icon's and the desktop entry's name

/// Pairs of key and label. The default action, which is the click itself, is there for every
/// notification: some servers start the program instead where there is none. It has no label, so
/// that no server draws a button for it.
QStringList actions(const NotificationRequest& request) {
    QStringList actions{u"default"_s, QString()};
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

} // namespace

QVariantList notifyArguments(
    const NotificationRequest& request, const QStringList& capabilities, uint replacesId) {
    const bool parsesMarkup = capabilities.contains("body-markup"_L1);
    const bool takesActions = capabilities.contains("actions"_L1);
    return {
        u"Lumora"_s,
        replacesId,
        programId,
        singleLine(request.title),
        parsesMarkup ? escapedForMarkup(request.body) : plainLines(request.body),
        takesActions ? actions(request) : QStringList(),
        hints(),
        serversOwnTimeout,
    };
}

} // namespace lumora
