#include "linux/notifications/NotificationMessage.h"

#include "briefing/TextBounds.h"

#include <gtest/gtest.h>

#include <limits>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QStringList everything{u"actions"_s, u"body"_s, u"body-markup"_s, u"sound"_s};

constexpr Instant shownAt{1'700'000'000s};

NotificationRequest request() {
    return {
        .identifier = u"Standup|1.0"_s,
        .title = u"Standup"_s,
        .body = u"Starts in 5 min · Room 4"_s,
        .userInfo = {{u"meetingUrl"_s, u"https://meet.example/a"_s}},
        .button = u"Join"_s,
    };
}

/// The arguments by their names in the protocol.
struct Arguments {
    explicit Arguments(QVariantList arguments)
        : list(std::move(arguments)) {}

    QVariantList list;
    QVariant appName = list.value(0);
    QVariant replacesId = list.value(1);
    QVariant appIcon = list.value(2);
    QString summary = list.value(3).toString();
    QString body = list.value(4).toString();
    QStringList actions = list.value(5).toStringList();
    QVariantMap hints = list.value(6).toMap();
    QVariant timeout = list.value(7);
};

Arguments arguments(
    const NotificationRequest& wanted, const QStringList& capabilities = everything,
    uint replacesId = 0) {
    return Arguments(notifyArguments(wanted, {{}, {}, capabilities}, replacesId, shownAt));
}

} // namespace

TEST(NotificationMessage, HasTheTypesOfTheProtocol) {
    QByteArrayList types;
    for (const QVariant& argument : notifyArguments(request(), {{}, {}, everything}, 7, shownAt))
        types += argument.typeName();
    EXPECT_EQ(
        types, (QByteArrayList{
                   "QString", "uint", "QString", "QString", "QString", "QStringList", "QVariantMap",
                   "int"}));
}

TEST(NotificationMessage, SaysWhoItIsFrom) {
    const Arguments message = arguments(request());
    EXPECT_EQ(message.appName, u"Lumora"_s);
    EXPECT_EQ(message.appIcon, u"com.lumora.app"_s);
    EXPECT_EQ(message.hints.value(u"desktop-entry"_s), u"com.lumora.app"_s);
}

TEST(NotificationMessage, SoundsAndIsOfNormalUrgency) {
    const QVariantMap hints = arguments(request()).hints;
    EXPECT_EQ(hints.value(u"sound-name"_s), u"message-new-instant"_s);
    EXPECT_STREQ(hints.value(u"urgency"_s).typeName(), "uchar");
    EXPECT_EQ(hints.value(u"urgency"_s).toUInt(), 1U);
    EXPECT_EQ(arguments(request()).timeout, -1);
}

TEST(NotificationMessage, TakesThePlaceOfAnother) {
    EXPECT_EQ(arguments(request(), everything, 7).replacesId, 7U);
}

TEST(NotificationMessage, OffersTheClickAlwaysAndTheButtonWhereThereIsOne) {
    EXPECT_EQ(
        arguments(request()).actions, (QStringList{u"default"_s, u""_s, u"button"_s, u"Join"_s}));
    NotificationRequest plain = request();
    plain.button.reset();
    EXPECT_EQ(arguments(plain).actions, (QStringList{u"default"_s, u""_s}));
}

TEST(NotificationMessage, XfceIsGivenNoClickToMakeAButtonOf) {
    const NotificationAbilities xfce{
        .server = {}, .program = u"Xfce Notify Daemon"_s, .capabilities = everything};
    const auto actions = [&](const NotificationRequest& wanted) {
        return Arguments(notifyArguments(wanted, xfce, 0, shownAt)).actions;
    };
    EXPECT_EQ(actions(request()), (QStringList{u"button"_s, u"Join"_s}));
    NotificationRequest plain = request();
    plain.button.reset();
    EXPECT_EQ(actions(plain), QStringList());
}

TEST(NotificationMessage, OffersNothingToAServerWithoutActions) {
    EXPECT_EQ(arguments(request(), {u"body"_s}).actions, QStringList());
    EXPECT_EQ(arguments(request(), {}).actions, QStringList());
}

TEST(NotificationMessage, EscapesTheBodyWhereMarkupIsParsed) {
    NotificationRequest tricky = request();
    tricky.title = u"<b>R&D</b>"_s;
    tricky.body = u"Starts in 5 min · <a href=\"x\">R&D</a>\nupstairs"_s;
    EXPECT_EQ(
        arguments(tricky).body,
        u"Starts in 5 min · &lt;a href=\"x\"&gt;R&amp;D&lt;/a&gt;\nupstairs"_s);
    EXPECT_EQ(arguments(tricky, {u"actions"_s, u"body"_s}).body, tricky.body);
    EXPECT_EQ(arguments(tricky).summary, tricky.title); // plain text everywhere
}

TEST(NotificationMessage, HasNoControlCharactersAndTurnsNothing) {
    NotificationRequest tricky = request();
    tricky.title = u"Stand\u202eup\u001b[31m"_s;
    tricky.body = u"Starts in 5 min · Room\u0007\u2067 4"_s;
    EXPECT_EQ(arguments(tricky).summary, u"Standup [31m"_s);
    EXPECT_EQ(arguments(tricky).body, u"Starts in 5 min · Room  4"_s);
    EXPECT_EQ(arguments(tricky, {u"body"_s}).body, u"Starts in 5 min · Room  4"_s);
}

TEST(NotificationMessage, KeepsTheTitleOnOneLine) {
    NotificationRequest tricky = request();
    tricky.title = u"Stand\nup\t☕"_s;
    EXPECT_EQ(arguments(tricky).summary, u"Stand up ☕"_s);
}

TEST(NotificationMessage, StaysAsLongAsItIsOfUse) {
    const auto timeout = [](std::optional<Instant> usefulUntil) {
        NotificationRequest wanted = request();
        wanted.usefulUntil = usefulUntil;
        return arguments(wanted).timeout.toInt();
    };
    EXPECT_EQ(timeout(shownAt + 5min), 300'000);
    EXPECT_EQ(timeout(shownAt + 12'345'600us), 12'346);
    EXPECT_EQ(timeout(shownAt + 1s), 10'000); // nobody reads as fast
    EXPECT_EQ(timeout(shownAt + 1000h), std::numeric_limits<int>::max());
    // What came too late is shown as the server shows anything.
    EXPECT_EQ(timeout(shownAt), -1);
    EXPECT_EQ(timeout(shownAt - 1s), -1);
    EXPECT_EQ(timeout({}), -1);
}

TEST(NotificationMessage, IsNoLongerThanIsRead) {
    NotificationRequest endless = request();
    endless.title = QString(100'000, u'<');
    endless.body = QString(100'000, u'<');
    EXPECT_EQ(arguments(endless).summary.size(), longestLine);
    EXPECT_EQ(arguments(endless, {}).body.size(), longestPassage);
    EXPECT_EQ(arguments(endless).body.count(u"&lt;"_s), longestPassage - 1);
}
