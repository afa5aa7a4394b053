// Calls and signals with arguments of any types: each call is answered, and nothing comes of what
// no desktop would send.

#include "Expectations.h"
#include "Input.h"
#include "PeerDesktop.h"
#include "SomeArguments.h"
#include "Targets.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

struct Place {
    QString path;
    QString interface;
    QStringList members;
};

const std::array<Place, 6>& places() {
    static const std::array<Place, 6> all{
        Place{
            u"/MenuBar"_s,
            u"com.canonical.dbusmenu"_s,
            {u"GetLayout"_s, u"GetGroupProperties"_s, u"GetProperty"_s, u"Event"_s, u"EventGroup"_s,
             u"AboutToShow"_s, u"AboutToShowGroup"_s}},
        Place{
            u"/StatusNotifierItem"_s,
            u"org.kde.StatusNotifierItem"_s,
            {u"Activate"_s, u"SecondaryActivate"_s, u"ContextMenu"_s, u"Scroll"_s,
             u"ProvideXdgActivationToken"_s}},
        Place{
            u"/com/lumora/app"_s,
            u"com.lumora.app"_s,
            {u"Status"_s, u"Refresh"_s, u"Join"_s, u"Capture"_s, u"ToggleHabit"_s, u"FinishChore"_s,
             u"Agenda"_s, u"Open"_s, u"Hide"_s, u"Toggle"_s, u"OpenSettings"_s, u"Quit"_s}},
        Place{
            u"/StatusNotifierItem"_s,
            u"org.freedesktop.DBus.Properties"_s,
            {u"Get"_s, u"GetAll"_s, u"Set"_s}},
        Place{
            u"/MenuBar"_s, u"org.freedesktop.DBus.Properties"_s, {u"Get"_s, u"GetAll"_s, u"Set"_s}},
        Place{
            signalsPath,
            {},
            {u"prepareForSleep"_s, u"stateChanged"_s, u"onActionInvoked"_s, u"onActivationToken"_s,
             u"onNotificationClosed"_s, u"onSetting"_s, u"onXfceSetting"_s,
             u"onXfceSettingRemoved"_s, u"itemSignalled"_s, u"collectionSignalled"_s,
             u"propertiesChanged"_s}},
    };
    return all;
}

QDBusMessage someCall(Input& input) {
    const Place& place = places()[size_t(input.below(int(places().size())))];
    const QString& member = place.members[input.below(int(place.members.size()))];
    auto call = QDBusMessage::createMethodCall({}, place.path, place.interface, member);
    call.setArguments(someArguments(input));
    return call;
}

} // namespace

void calls(QByteArrayView input) {
    Input values(input);
    const QDBusMessage answer = PeerDesktop::theOne().ask(someCall(values));
    expect(
        answer.type() == QDBusMessage::ReplyMessage || answer.type() == QDBusMessage::ErrorMessage,
        "an answer");
    expect(
        answer.errorName() != u"org.freedesktop.DBus.Error.NoReply" &&
            answer.errorName() != u"org.freedesktop.DBus.Error.Disconnected",
        "an answer in time");
}

} // namespace lumora::fuzz
